// BundleZip: the zip work of theme bundles, done by libzip. Builds without
// libzip (the Windows build: Debian has none for MinGW) have no bundles, and
// every call says so.
#pragma once

#include "foundation/Result.h"
#include "themes/BundleCheck.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace glyphmoor {

// False in a build without libzip.
bool BundlesBuilt();

// The contents of every entry the check passed, in the same order, each
// inflated to exactly its declared size with its CRC checked; or why not,
// naming the entry. Nothing is kept of an entry that fails.
Result<std::vector<std::string>> InflateBundle(std::span<const std::byte> archive,
                                               const std::vector<BundleEntry>& entries);

// One file to pack: its name in the archive and the host file it comes from.
struct BundleSource {
    std::string name;
    std::filesystem::path file;
};

// Writes the files, deflated, as a new zip archive at `zip` (replacing one
// that is there only once the new one is complete).
Status WriteBundleArchive(const std::filesystem::path& zip, const std::vector<BundleSource>& files);

}  // namespace glyphmoor
