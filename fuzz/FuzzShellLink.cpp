// Feeds arbitrary bytes to the shell link reader; a link it reads must come
// back the same through the writer.
#include "themes/ShellLink.h"

#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glyphmoor;
    const auto link =
        ReadShellLink(std::span<const std::byte>(reinterpret_cast<const std::byte*>(data), size));
    if (!link.ok()) {
        return 0;
    }
    const auto again = ReadShellLink(ShellLinkBytes(*link));
    if (!again.ok() || again->iconIndex != link->iconIndex) {
        std::abort();
    }
    return 0;
}
