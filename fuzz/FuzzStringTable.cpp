// String-table blocks: every place of a block read from hostile bytes.
#include "iconfiles/StringResource.h"

#include <cstddef>
#include <cstdint>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (unsigned i = 0; i <= 16; ++i) {
        (void)glyphmoor::StringOfBlock(std::as_bytes(std::span(data, size)), i);
    }
    return 0;
}
