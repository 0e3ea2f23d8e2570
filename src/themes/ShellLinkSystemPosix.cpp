// Outside Windows there is no system link object: a machine folder's links
// are the program's own (ShellLinkBytes).
#include "themes/ShellLinkFile.h"

namespace glyphmoor {

Status SaveSystemShellLink(const std::filesystem::path& /*file*/, const ShellLink& /*link*/) {
    return Fail("this system has no shell link object");
}

Result<ShellLink> LoadSystemShellLink(const std::filesystem::path& /*file*/) {
    return Fail("this system has no shell link object");
}

}  // namespace glyphmoor
