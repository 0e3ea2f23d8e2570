// Feeds arbitrary bytes to the Wine registry reader; whatever it accepts must
// write out to text it accepts again.
#include "foundation/WineRegistryText.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = std::make_shared<const std::string>(reinterpret_cast<const char*>(data), size);
    auto hive = glyphmoor::ParseWineRegistry(text, "fuzz.reg");
    if (hive.ok()) {
        hive->Create("Fuzz\\Added", glyphmoor::FileTimeNow())
            .SetValue("v", {glyphmoor::kRegSz, {'x', 0, 0, 0}});
        auto again = std::make_shared<const std::string>(glyphmoor::SerializeWineRegistry(*hive));
        if (!glyphmoor::ParseWineRegistry(again, "again.reg").ok()) {
            std::abort();
        }
    }
    return 0;
}
