#include "iconfiles/modResource.h"

#include "foundation/FileIo.h"
#include "iconfiles/PeRecords.h"
#include "iconfiles/cFileIcon.h"

#include <cstddef>
#include <string>

namespace glyphmoor {

namespace {

// Executables larger than this are refused; the largest system libraries are
// a few tens of megabytes.
constexpr std::size_t kMaxExecutableBytes = 512u << 20;

}  // namespace

const ResourceTypeEntry* ResourceDirectory::FindType(const ResourceId& type) const {
    for (const ResourceTypeEntry& t : types) {
        if (t.type.Matches(type)) {
            return &t;
        }
    }
    return nullptr;
}

const ResourceData* ResourceDirectory::Find(const ResourceId& type, const ResourceId& name) const {
    const ResourceTypeEntry* t = FindType(type);
    if (t == nullptr) {
        return nullptr;
    }
    for (const ResourceData& r : t->resources) {
        if (r.name.Matches(name)) {
            return &r;
        }
    }
    return nullptr;
}

Result<ResourceDirectory> ReadResourceDirectory(std::span<const std::byte> file) {
    const ByteReader r(file);
    if (r.U16(0) != pe::DosHeader{}.magic) {
        return Fail("the file is not an executable or library (it does not start with MZ)");
    }
    const auto next = r.U32(offsetof(pe::DosHeader, peOffset));
    if (!next) {
        return Fail("the file is an MS-DOS program without Windows resources");
    }
    const auto signature = r.U16(*next);
    if (r.U32(*next) == pe::kPeSignature) {
        return ReadPeResources(r, *next);
    }
    if (signature == 0x454e) {  // "NE"
        return ReadNeResources(r, *next);
    }
    return Fail("the file is an MS-DOS program without Windows resources");
}

Result<ExecutableModule> ExecutableModule::FromBytes(std::vector<std::byte> bytes) {
    auto dir = TRY(ReadResourceDirectory(bytes));
    ExecutableModule module;
    module.m_bytes = std::move(bytes);
    module.m_directory = std::move(dir);
    return module;
}

Result<ExecutableModule> ExecutableModule::Open(const std::filesystem::path& file) {
    auto bytes = TRY(ReadFileBytes(file, kMaxExecutableBytes));
    auto module = FromBytes(std::move(bytes));
    if (!module) {
        return Fail(file.filename().string() + ": " + module.reason());
    }
    return module;
}

std::span<const std::byte> ExecutableModule::Data(const ResourceData& resource) const {
    const ByteReader r(m_bytes);
    if (resource.offset >= r.size()) {
        return {};
    }
    const std::size_t n = std::min(resource.size, r.size() - resource.offset);
    return *r.Bytes(resource.offset, n);
}

std::span<const ResourceData> ExecutableModule::IconGroups() const {
    const ResourceTypeEntry* t = m_directory.FindType(ResourceId::Number(kRtGroupIcon));
    return t == nullptr ? std::span<const ResourceData>() : std::span<const ResourceData>(t->resources);
}

namespace {

bool LooksLikeIconFile(std::span<const std::byte> head) {
    const ByteReader r(head);
    return r.U16(0) == 0 && r.U16(2) == 1 && r.U16(4).value_or(0) >= 1;
}

bool StartsWithMz(std::span<const std::byte> head) {
    return ByteReader(head).U16(0) == pe::DosHeader{}.magic;
}

}  // namespace

int IconCountOfFile(const std::filesystem::path& file) {
    auto head = ReadFileHead(file, 6);
    if (!head) {
        return 0;
    }
    if (!StartsWithMz(*head)) {
        return LooksLikeIconFile(*head) ? 1 : 0;
    }
    auto module = ExecutableModule::Open(file);
    return module ? static_cast<int>(module->IconGroups().size()) : 0;
}

Status LoadIconOfModule(const ExecutableModule& module, int index, cFileIcon& icon) {
    const auto groups = module.IconGroups();
    if (index >= 0 && static_cast<std::size_t>(index) >= groups.size()) {
        icon.Clear();
        return Fail("the file has " + std::to_string(groups.size()) + " icons, so there is no icon " +
                    std::to_string(index));
    }
    if (index < -0xffff) {
        icon.Clear();
        return Fail("there is no resource id " + std::to_string(-static_cast<long long>(index)));
    }
    const ResourceId id = index >= 0 ? groups[static_cast<std::size_t>(index)].name
                                     : ResourceId::Number(static_cast<std::uint16_t>(-index));
    if (!icon.LoadIconFromEXE(module, id)) {
        return Fail(icon.Reason());
    }
    return {};
}

Status LoadIconOfFile(const std::filesystem::path& file, int index, cFileIcon& icon) {
    auto head = ReadFileHead(file, 6);
    if (!head) {
        icon.Clear();
        return Fail(head.reason());
    }
    if (!StartsWithMz(*head)) {
        // Anything but an executable is read as an icon file, so that a
        // broken one says what is wrong with it.
        if (index != 0) {
            icon.Clear();
            return Fail("an icon file holds one icon, at index 0");
        }
        if (!icon.LoadIcon(file)) {
            return Fail(icon.Reason());
        }
        return {};
    }
    auto module = ExecutableModule::Open(file);
    if (!module) {
        icon.Clear();
        return Fail(module.reason());
    }
    Status status = LoadIconOfModule(*module, index, icon);
    if (status) {
        icon.SetFilename(file.string());
    }
    return status;
}

}  // namespace glyphmoor
