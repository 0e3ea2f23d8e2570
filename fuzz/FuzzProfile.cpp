// Feeds arbitrary bytes to the profile parser, reads them every way the
// program does and makes one write, which must then read back.
#include "foundation/modProfile.h"

#include <array>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glyphmoor;
    ProfileFile file = ProfileFile::Parse(std::string_view(reinterpret_cast<const char*>(data), size));
    std::array<char, 300> buffer{};
    for (const std::uint32_t bufferSize : {0U, 1U, 2U, 16U, kProfileKeyListSize}) {
        const std::span<char> span(buffer.data(), bufferSize);
        ProfileGetString(file, std::nullopt, std::nullopt, "d", span);
        ProfileGetString(file, "s", std::nullopt, "d", span);
        ProfileGetString(file, " S ", "k", "'q'", span);
    }
    file.DeleteKey("s", "k");
    file.SetValue("s", "k", "v");
    const std::uint32_t n =
        ProfileGetString(file, "s", "k", "", std::span<char>(buffer.data(), kProfileValueSize));
    if (std::string_view(buffer.data(), n) != "v") {
        std::abort();
    }
    file.DeleteSection("s");
    return 0;
}
