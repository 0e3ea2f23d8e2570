// BundleCheck: a theme bundle (a zip archive) read as untrusted bytes, and
// refused whole unless every entry is a plain file with a plain name that fits
// the limits.
//
// The check reads the archive's own structure (end record, central directory,
// local headers) without trusting any size or offset in it, and does not
// inflate anything: UnpackBundleFiles does that, through libzip, once the
// check has passed. A bundle is stricter than any zip archive: entries live
// at the top (no folders), names are plain ASCII or flagged UTF-8 and usable
// as Windows file names, no name repeats (compared without regard to case),
// and no two entries share bytes.
#pragma once

#include "foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::size_t kBundleMaxEntries = 100;
inline constexpr std::uint64_t kBundleMaxFileBytes = 16ULL << 20U;
inline constexpr std::uint64_t kBundleMaxTotalBytes = 64ULL << 20U;
// The largest archive read at all: every entry at its limit, stored, with
// its headers, fits well below it.
inline constexpr std::uint64_t kBundleMaxArchiveBytes = kBundleMaxTotalBytes + (2ULL << 20U);

// One entry as the central directory and its local header agree on it.
struct BundleEntry {
    std::string name;
    std::uint16_t method = 0;  // 0 stored, 8 deflated
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t size = 0;
    std::uint32_t dataOffset = 0;  // where the entry's compressed bytes start
};

// The entries of the archive in central-directory order, or why it is
// refused (naming the entry where there is one).
Result<std::vector<BundleEntry>> CheckBundle(std::span<const std::byte> archive);

// Why `name` cannot be an entry of a bundle, or nothing when it can: used by
// the check and by packing, so a bundle the program makes always opens.
Status CheckBundleEntryName(std::string_view name);

}  // namespace glyphmoor
