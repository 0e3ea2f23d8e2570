// Under Wine, the Windows build asks Wine's own shell which picture it draws
// for a folder given an icon through the real calls, and after the icon is
// taken away again: what the program writes is what the shell reads.
//
// Wine 8's shell reads the folder's attributes and its desktop.ini, and takes
// "IconIndex" from it; the "IconFile" it reads is not handed on (the file it
// names comes back as whatever its buffer held), so only the index is
// compared. Its explorer draws such a folder with its generic picture.
#include "folders/FolderIcon.h"
#include "foundation/WindowsMachine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windows.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

bool UnderWine() {
    HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// The picture the shell draws for a path: file name (lower case) and index.
std::pair<std::wstring, int> Drawn(const fs::path& path) {
    PIDLIST_ABSOLUTE pidl = nullptr;
    if (FAILED(::SHParseDisplayName(path.wstring().c_str(), nullptr, &pidl, 0, nullptr))) {
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

TEST(WineShellFolderIcon, IsTheOneTheDesktopIniNames) {
    if (!UnderWine()) {
        GTEST_SKIP() << "this checks Wine's shell";
    }
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    const fs::path folder = fs::temp_directory_path() / "glyphmoor-folder-icon";
    fs::remove_all(folder);
    fs::create_directories(folder);
    const auto item = FolderItemOf(folder.string());
    ASSERT_TRUE(item.has_value()) << folder.string();
    const std::unique_ptr<Machine> machine = OpenSystemMachine();
    const auto plain = Drawn(folder);

    ASSERT_TRUE(SetFolderIcon(*machine, *item, {"C:\\windows\\system32\\shell32.dll", 15}).ok());
    EXPECT_EQ(::GetFileAttributesW(folder.wstring().c_str()), DWORD{FILE_ATTRIBUTE_DIRECTORY | 4});
    EXPECT_EQ(::GetFileAttributesW((folder / "desktop.ini").wstring().c_str()), DWORD{0x22});
    EXPECT_EQ(Drawn(folder).second, 15);

    ASSERT_TRUE(RemoveFolderIcon(*machine, *item).ok());
    EXPECT_EQ(::GetFileAttributesW(folder.wstring().c_str()), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(Drawn(folder), plain);
    fs::remove_all(folder);
    ::CoUninitialize();
}

}  // namespace
}  // namespace glyphmoor::test
