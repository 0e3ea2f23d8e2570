// Under Wine, the Windows build asks Wine's own shell which picture it draws
// for each object and shell icon the catalogue gives a Wine default: the
// answers must be the ones the catalogue's tables hold.
#include "icons/OwnDefaults.h"

#include <gtest/gtest.h>

#include <string>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windows.h>

namespace glyphmoor::test {
namespace {

bool UnderWine() {
    HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// The picture the shell draws for a parsing name: file and index.
std::pair<std::wstring, int> Drawn(const std::wstring& name) {
    PIDLIST_ABSOLUTE pidl = nullptr;
    if (FAILED(::SHParseDisplayName(name.c_str(), nullptr, &pidl, 0, nullptr))) {
        return {L"(no such object)", 0};
    }
    SHFILEINFOW info{};
    ::SHGetFileInfoW(reinterpret_cast<LPCWSTR>(pidl), 0, &info, sizeof info, SHGFI_PIDL | SHGFI_ICONLOCATION);
    ::CoTaskMemFree(pidl);
    std::wstring file = info.szDisplayName;
    const auto slash = file.rfind(L'\\');
    file = file.substr(slash == std::wstring::npos ? 0 : slash + 1);
    for (wchar_t& c : file) {
        c = static_cast<wchar_t>(::towlower(c));
    }
    return {file, info.iIcon};
}

TEST(WineShellPictures, AreTheOnesTheCatalogueDefaultsTo) {
    if (!UnderWine()) {
        GTEST_SKIP() << "Windows itself draws other pictures; this checks Wine's";
    }
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    for (const WineObjectPicture& object : WineObjectPictures()) {
        const std::wstring name = L"::" + std::wstring(object.clsid.begin(), object.clsid.end());
        EXPECT_EQ(Drawn(name), std::make_pair(std::wstring(L"shell32.dll"), -object.resourceId))
            << object.clsid;
    }
    // Shell icons: resource id = index + 1. A folder is index 3, a fixed drive 8.
    EXPECT_EQ(Drawn(L"C:\\windows"), std::make_pair(std::wstring(L"shell32.dll"), -(3 + 1)));
    EXPECT_EQ(Drawn(L"C:\\"), std::make_pair(std::wstring(L"shell32.dll"), -(8 + 1)));
    ::CoUninitialize();
}

}  // namespace
}  // namespace glyphmoor::test
