#include "foundation/InstallPaths.h"

#include <windows.h>

#include <vector>

namespace glyphmoor {

std::filesystem::path RunningProgramDir() {
    std::vector<wchar_t> name(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (length == 0) {
            return {};
        }
        if (length < name.size()) {
            return std::filesystem::path(std::wstring(name.data(), length)).parent_path();
        }
        name.resize(name.size() * 2);
    }
}

}  // namespace glyphmoor
