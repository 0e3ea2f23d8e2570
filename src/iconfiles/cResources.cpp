#include "iconfiles/cResources.h"

#include <array>

namespace glyphmoor {

std::string ResourceTypeNameOfId(std::uint16_t id) {
    struct Row {
        std::uint16_t id;
        const char* name;
    };
    // Ids 19 and 20 both read "VXD"; the program has always shown them so.
    static constexpr std::array<Row, 20> kNames = {
        {{1, "Cursor"},         {2, "Bitmap"},         {3, "Icon"},
         {4, "Menu"},           {5, "Dialog"},         {6, "String"},
         {7, "Font Directory"}, {8, "Font"},           {9, "Accelerators"},
         {10, "RC Data"},       {11, "Message Table"}, {12, "Group Cursor"},
         {14, "Group Icon"},    {16, "Version"},       {17, "Dialog Include"},
         {19, "VXD"},           {20, "VXD"},           {21, "Animated Cursor"},
         {22, "Animated Icon"}, {23, "HTML"}}};
    for (const Row& row : kNames) {
        if (row.id == id) {
            return row.name;
        }
    }
    return "Other (" + std::to_string(id) + ")";
}

bool cResources::GetResourceTypes(const std::filesystem::path& file) {
    m_types.clear();
    m_reason.clear();
    if (!m_module) {
        auto module = ExecutableModule::Open(file);
        if (!module) {
            m_reason = module.reason();
            return false;
        }
        m_module = std::move(*module);
    }
    for (const ResourceTypeEntry& t : m_module->Directory().types) {
        m_types.push_back(t.type);
    }
    if (m_types.empty()) {
        m_reason = "the file has no resources";
        return false;
    }
    return true;
}

const ResourceId& cResources::ResourceType(int index) const {
    return m_types.at(static_cast<std::size_t>(index - 1));
}

std::string cResources::ResourceTypeName(int index) const {
    const ResourceId& type = ResourceType(index);
    return type.isName ? type.name : ResourceTypeNameOfId(type.number);
}

int cResources::IndexOfResourceType(const ResourceId& type) const {
    for (std::size_t i = 0; i < m_types.size(); ++i) {
        if (m_types[i].Matches(type)) {
            return static_cast<int>(i + 1);
        }
    }
    return 0;
}

bool cResources::GetResourceNames(const ResourceId& type) {
    m_names.clear();
    m_reason.clear();
    if (!m_module) {
        m_reason = "no file is open";
        return false;
    }
    const ResourceTypeEntry* entry = m_module->Directory().FindType(type);
    if (entry == nullptr || entry->resources.empty()) {
        m_reason = "the file has no resources of type " + type.ToString();
        return false;
    }
    for (const ResourceData& r : entry->resources) {
        m_names.push_back(r.name);
    }
    return true;
}

const ResourceId& cResources::ResourceName(int index) const {
    return m_names.at(static_cast<std::size_t>(index - 1));
}

void cResources::ClearUp() {
    m_types.clear();
    m_names.clear();
}

}  // namespace glyphmoor
