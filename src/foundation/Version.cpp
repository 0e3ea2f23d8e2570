#include "foundation/Version.h"

namespace glyphmoor {

std::string_view ProgramVersion() {
    return GLYPHMOOR_VERSION;
}

}  // namespace glyphmoor
