// modResource: the resource directory of an executable or library, read by the
// program's own code from the file's bytes, for 32-bit (PE32) and 64-bit
// (PE32+) Windows files and 16-bit NE files (old programs and *.icl icon
// libraries). Types and names come in the order of the file's directory,
// which is the order Windows' resource enumeration reports them in.
//
// Also what the rest of the program uses in place of ExtractIconA: the number
// of icons in a file and icon i of a file.
#pragma once

#include "foundation/ByteReader.h"
#include "foundation/FileIo.h"
#include "foundation/Result.h"
#include "iconfiles/ResourceId.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace glyphmoor {

class cFileIcon;

enum class ExecutableKind { Pe32, Pe32Plus, Ne };

// Numeric resource types the program uses.
inline constexpr std::uint16_t kRtCursor = 1;
inline constexpr std::uint16_t kRtIcon = 3;
inline constexpr std::uint16_t kRtGroupCursor = 12;
inline constexpr std::uint16_t kRtGroupIcon = 14;

// One resource: where its bytes lie in the file. For NE files the size is the
// table's length, which is rounded up to the file's alignment unit.
struct ResourceData {
    ResourceId name;
    std::size_t offset = 0;
    std::size_t size = 0;
};

struct ResourceTypeEntry {
    ResourceId type;
    std::vector<ResourceData> resources;
};

struct ResourceDirectory {
    ExecutableKind kind = ExecutableKind::Pe32;
    std::vector<ResourceTypeEntry> types;

    [[nodiscard]] const ResourceTypeEntry* FindType(const ResourceId& type) const;
    [[nodiscard]] const ResourceData* Find(const ResourceId& type, const ResourceId& name) const;
};

// A hostile directory could name the same subdirectory from every entry and
// so list billions of resources from a small file; beyond this many the file
// is refused.
inline constexpr std::size_t kMaxResources = 1u << 16;

// Reads the resource directory of a PE or NE file. A file without a resource
// section (or with an empty one) fails with a reason, as does anything that
// is not such a file.
Result<ResourceDirectory> ReadResourceDirectory(std::span<const std::byte> file);
Result<ResourceDirectory> ReadPeResources(const ByteReader& file, std::size_t peOffset);
Result<ResourceDirectory> ReadNeResources(const ByteReader& file, std::size_t neOffset);

// An executable's bytes with its resource directory: what LoadLibraryExA as a
// data file gives on Windows.
class ExecutableModule {
public:
    static Result<ExecutableModule> Open(const std::filesystem::path& file);
    static Result<ExecutableModule> FromBytes(std::vector<std::byte> bytes);

    [[nodiscard]] const ResourceDirectory& Directory() const { return m_directory; }
    // The bytes of one resource (clipped to the file for NE files).
    [[nodiscard]] std::span<const std::byte> Data(const ResourceData& resource) const;
    // The icon groups (type 14), in directory order.
    [[nodiscard]] std::span<const ResourceData> IconGroups() const;

private:
    std::vector<std::byte> m_bytes;
    ResourceDirectory m_directory;
};

// The number of icons in a file as ExtractIconA counts them: 1 for an icon
// file, the number of icon groups of an executable or library, else 0.
int IconCountOfFile(const std::filesystem::path& file);

// Icon `index` of a file as ExtractIconA finds it: the only icon of an icon
// file at index 0; in an executable the index-th icon group in directory
// order, or, for a negative index, the group whose resource id is the
// index's absolute value, as the shell reads an icon location ("shell32.dll,-1"
// is the group with id 1; only ExtractIconA itself takes -1 for the count).
Status LoadIconOfFile(const std::filesystem::path& file, int index, cFileIcon& icon);
Status LoadIconOfModule(const ExecutableModule& module, int index, cFileIcon& icon);

}  // namespace glyphmoor
