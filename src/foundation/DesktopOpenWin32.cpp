#include "foundation/System.h"
#include "foundation/TextEncoding.h"

#include <windows.h>
// shellapi.h needs windows.h first.
#include <shellapi.h>

namespace glyphmoor {

bool OpenWithDesktop(std::string_view pathOrAddress) {
    const std::u16string wide = Utf8ToUtf16(pathOrAddress);
    // ShellExecute reports success with a value above 32.
    const auto result = reinterpret_cast<INT_PTR>(::ShellExecuteW(
        nullptr, L"open", reinterpret_cast<const wchar_t*>(wide.c_str()), nullptr, nullptr, SW_SHOWNORMAL));
    return result > 32;
}

}  // namespace glyphmoor
