// cResources: lists the resource types of an executable or library and the
// resource names of one type, as the Change Icon dialog needs them. Indices
// run from 1 to the count, as the program has always used them.
#pragma once

#include "iconfiles/ResourceId.h"
#include "iconfiles/modResource.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace glyphmoor {

// Display name of a numeric resource type: "Icon", "Group Icon", ...; ids the
// table does not know read "Other (13)".
std::string ResourceTypeNameOfId(std::uint16_t id);

class cResources {  // NOLINT(readability-identifier-naming)
public:
    // Opens the file as data when none is open, then lists its types. False
    // and empty lists when the file cannot be read, is not an executable or
    // has no resources.
    bool GetResourceTypes(const std::filesystem::path& file);
    [[nodiscard]] int ResourceTypeCount() const { return static_cast<int>(m_types.size()); }
    [[nodiscard]] const ResourceId& ResourceType(int index) const;
    // A numeric type by the table, a named type as its own text.
    [[nodiscard]] std::string ResourceTypeName(int index) const;
    // The index of a type in the list, 0 when it is not listed.
    [[nodiscard]] int IndexOfResourceType(const ResourceId& type) const;

    // Lists the names of the resources of one type; false (and an empty list)
    // when no module is open or it has none of that type.
    bool GetResourceNames(const ResourceId& type);
    [[nodiscard]] int ResourceNameCount() const { return static_cast<int>(m_names.size()); }
    [[nodiscard]] const ResourceId& ResourceName(int index) const;

    // Whether a module is open (the program's hModule being non-zero).
    [[nodiscard]] bool hModule() const { return m_module.has_value(); }  // NOLINT
    [[nodiscard]] const ExecutableModule* Module() const { return m_module ? &*m_module : nullptr; }
    void UnloadModule() { m_module.reset(); }
    void ClearUp();

    [[nodiscard]] const std::string& Reason() const { return m_reason; }

private:
    std::optional<ExecutableModule> m_module;
    std::vector<ResourceId> m_types;
    std::vector<ResourceId> m_names;
    std::string m_reason;
};

}  // namespace glyphmoor
