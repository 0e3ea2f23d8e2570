#include "themes/ShellLinkFile.h"

#include "foundation/FileIo.h"

#include <string>

namespace glyphmoor {

namespace {

// A shell link is small: its strings are counted in 16 bits.
constexpr std::uint64_t kMaxLinkBytes = 1U << 20U;

}  // namespace

Status CreateShellLink(const Environment& machine, std::string_view lnkFile, const ShellLink& link) {
    const std::filesystem::path host = machine.HostPath(lnkFile);
    if (machine.Kind() == MachineKind::RealWindows) {
        return SaveSystemShellLink(host, link);
    }
    const std::vector<std::byte> bytes = ShellLinkBytes(link);
    return WriteFileAtomically(host,
                               std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

Result<ShellLink> ReadShellLinkFile(const Environment& machine, std::string_view lnkFile) {
    const std::filesystem::path host = machine.HostPath(lnkFile);
    if (machine.Kind() == MachineKind::RealWindows) {
        return LoadSystemShellLink(host);
    }
    const std::vector<std::byte> bytes = TRY(ReadFileBytes(host, kMaxLinkBytes));
    auto link = ReadShellLink(bytes);
    if (!link.ok()) {
        return Fail(std::string(lnkFile) + " cannot be read: " + link.reason());
    }
    return link;
}

}  // namespace glyphmoor
