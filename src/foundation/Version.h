// The program's version, as both programs print it for --version.
#pragma once

#include <string_view>

namespace glyphmoor {

// The project's version in CMake ("0.1.0").
std::string_view ProgramVersion();

}  // namespace glyphmoor
