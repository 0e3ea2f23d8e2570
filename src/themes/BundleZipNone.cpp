// This build has no libzip, so it has no theme bundles.
#include "themes/BundleZip.h"

namespace glyphmoor {

namespace {

Failure NotBuilt() {
    return Fail("theme bundles are not part of this build (it was made without libzip)");
}

}  // namespace

bool BundlesBuilt() {
    return false;
}

Result<std::vector<std::string>> InflateBundle(std::span<const std::byte> /*archive*/,
                                               const std::vector<BundleEntry>& /*entries*/) {
    return NotBuilt();
}

Status WriteBundleArchive(const std::filesystem::path& /*zip*/, const std::vector<BundleSource>& /*files*/) {
    return NotBuilt();
}

}  // namespace glyphmoor
