// NE files: the resource table read directly, then every icon group as an icon.
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <cstddef>
#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* bytes = reinterpret_cast<const std::byte*>(data);
    // The NE header sits at 0x40 in the seeds; read it there whatever the MS-DOS header says.
    (void)glyphmoor::ReadNeResources(glyphmoor::ByteReader(std::span(bytes, size)), 0x40);
    auto module = glyphmoor::ExecutableModule::FromBytes(std::vector<std::byte>(bytes, bytes + size));
    if (module) {
        for (std::size_t i = 0; i < module->IconGroups().size(); ++i) {
            glyphmoor::cFileIcon icon;
            (void)glyphmoor::LoadIconOfModule(*module, static_cast<int>(i), icon);
        }
    }
    return 0;
}
