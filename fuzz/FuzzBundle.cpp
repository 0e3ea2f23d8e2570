// Feeds arbitrary bytes to the bundle check; what it passes is inflated, and
// every entry must then come out at exactly its declared size.
#include "themes/BundleCheck.h"
#include "themes/BundleZip.h"

#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glyphmoor;
    const std::span<const std::byte> bytes(reinterpret_cast<const std::byte*>(data), size);
    const auto entries = CheckBundle(bytes);
    if (!entries.ok()) {
        return 0;
    }
    if (entries->empty() || entries->size() > kBundleMaxEntries) {
        std::abort();
    }
    const auto contents = InflateBundle(bytes, *entries);
    if (contents.ok()) {
        for (std::size_t i = 0; i < entries->size(); ++i) {
            if (contents->at(i).size() != (*entries)[i].size) {
                std::abort();
            }
        }
    }
    return 0;
}
