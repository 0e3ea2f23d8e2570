// The portable profile functions against the Windows ones they stand for, case
// by case on the same files: GetPrivateProfileStringA with buffers pre-filled
// with sentinels, and WritePrivateProfileStringA followed by a whole-file
// comparison. Runs in the Windows build (under Wine in the project's own runs).
#include "foundation/FileIo.h"
#include "foundation/TextEncoding.h"
#include "foundation/modProfile.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>

namespace glyphmoor::test {
namespace {

constexpr char kSentinel = '\x7f';

struct Query {
    const char* section;  // nullptr: list the sections
    const char* key;      // nullptr: list the keys
    const char* defaultValue;
    std::uint32_t size;
};

// Where Wine's own profile functions part from Windows, the portable code
// follows Windows. Each entry names such a case; the test fails when an entry
// starts agreeing, so the list stays true.
struct KnownDifference {
    std::uint32_t queryIndex;
    const char* why;
};

const std::string kFile =
    "; leading comment\r\n"
    "[Desktop Icons]\r\n"
    "My Computer=C:\\WINDOWS\\explorer.exe,0\r\n"
    "  Recycle Bin (empty)  =  \"C:\\bin.ico,1\"  \r\n"
    "quoted='single'\r\n"
    "my computer=second occurrence\r\n"
    "no equals sign\r\n"
    "; comment=not a key\r\n"
    "Long=abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789\r\n"
    "\r\n"
    "[Empty]\r\n"
    "[desktop icons]\r\n"
    "Shadowed=never read\r\n"
    "[Options]\r\n"
    "BootGUI=1\r\n";

const Query kQueries[] = {
    {"Desktop Icons", "My Computer", "", 127},
    {"desktop icons", "MY COMPUTER", "", 127},
    {"Desktop Icons", "Recycle Bin (empty)", "", 127},
    {"Desktop Icons", "quoted", "", 127},
    {"Desktop Icons", "Shadowed", "fallback", 127},
    {"Desktop Icons", "missing", "  default with blanks  ", 127},
    {"Desktop Icons", "missing", "\"quoted default\"", 127},
    {"Desktop Icons", "Long", "", 10},
    {"Desktop Icons", "Recycle Bin (empty)", "", 8},
    {"Desktop Icons", "My Computer", "", 1},
    {"Desktop Icons", nullptr, "", 299},
    {"Desktop Icons", nullptr, "", 20},
    {"Empty", nullptr, "nothing here", 299},
    {"Nowhere", "x", "absent", 127},
    {nullptr, nullptr, "", 299},
    {nullptr, nullptr, "", 12},
    {"Options", "BootGUI", "", 127},
};

// Wine's GetPrivateProfileStringA ends a cut list with one NUL where Windows
// writes two.
const KnownDifference kKnown[] = {
    {11, "a cut key list"},
    {15, "a cut section list"},
};

std::string Call(const std::filesystem::path& file, const Query& q, bool windows, DWORD& result) {
    std::string buffer(q.size + 8, kSentinel);
    if (windows) {
        result = ::GetPrivateProfileStringA(q.section, q.key, q.defaultValue, buffer.data(), q.size,
                                            file.string().c_str());
    } else {
        auto optional = [](const char* text) { return text ? OptionalText(text) : std::nullopt; };
        result = ProfileGetString(file, optional(q.section), optional(q.key), optional(q.defaultValue),
                                  std::span<char>(buffer.data(), q.size));
    }
    return buffer;
}

// The test file with the line end a parameter names, or in UTF-16 with its
// byte-order mark (and CRLF) for "utf16".
std::string FileBytes(const std::string& param) {
    std::string text = kFile;
    if (param == "utf16") {
        return "\xFF\xFE" + Utf16ToBytes(Utf8ToUtf16(text));
    }
    for (std::size_t pos = text.find("\r\n"); pos != std::string::npos;
         pos = text.find("\r\n", pos + param.size())) {
        text.replace(pos, 2, param);
    }
    return text;
}

class ProfileAgainstWindows : public ::testing::TestWithParam<const char*> {};

TEST_P(ProfileAgainstWindows, ReadsGiveWhatWindowsGives) {
    TempDir dir;
    const std::string text = FileBytes(GetParam());
    dir.Write("test.ini", text);
    const auto file = dir.Path() / "test.ini";
    for (std::uint32_t i = 0; i < std::size(kQueries); ++i) {
        DWORD windowsResult = 0;
        DWORD portableResult = 0;
        const std::string windows = Call(file, kQueries[i], true, windowsResult);
        const std::string portable = Call(file, kQueries[i], false, portableResult);
        const bool known = std::any_of(std::begin(kKnown), std::end(kKnown),
                                       [&](const KnownDifference& k) { return k.queryIndex == i; });
        const bool same = windows == portable && windowsResult == portableResult;
        if (known) {
            EXPECT_FALSE(same) << "query " << i << " now agrees: take it off the known differences";
            EXPECT_EQ(windowsResult, portableResult) << "query " << i;
        } else {
            EXPECT_EQ(portableResult, windowsResult) << "query " << i;
            EXPECT_EQ(portable, windows) << "query " << i;
        }
    }
}

// Everything a file says, as Windows' own reading sees it: each section with
// its keys and values, in order.
std::string Meaning(const std::filesystem::path& file) {
    const std::string path = file.string();
    std::string out;
    std::string sections(8192, '\0');
    ::GetPrivateProfileStringA(nullptr, nullptr, "", sections.data(), static_cast<DWORD>(sections.size()),
                               path.c_str());
    for (const char* section = sections.c_str(); *section != '\0'; section += std::strlen(section) + 1) {
        out += "[" + std::string(section) + "]\n";
        std::string keys(8192, '\0');
        ::GetPrivateProfileStringA(section, nullptr, "", keys.data(), static_cast<DWORD>(keys.size()),
                                   path.c_str());
        for (const char* key = keys.c_str(); *key != '\0'; key += std::strlen(key) + 1) {
            std::string value(1024, '\0');
            const DWORD n = ::GetPrivateProfileStringA(section, key, "", value.data(),
                                                       static_cast<DWORD>(value.size()), path.c_str());
            out += std::string(key) + "=" + value.substr(0, n) + "\n";
        }
    }
    return out;
}

// Wine's WritePrivateProfileStringA writes the whole file anew from its own
// reading of it, dropping blank lines and the blanks around names and values
// that Windows leaves alone; the portable code keeps every untouched byte, as
// Windows does. So the files are compared by what Windows reads in them.
TEST_P(ProfileAgainstWindows, WritesLeaveFilesThatReadAsWindowsLeavesThem) {
    struct Write {
        const char* section;
        const char* key;
        const char* value;
    };
    const Write writes[] = {
        {"Desktop Icons", "My Computer", "C:\\new.ico,3"},      // replaced in place
        {"desktop icons", "Added", "appended to its section"},  // the first section of that name
        {"New Section", "Key", "Value"},                        // a section appended at the end
        {"Options", "BootGUI", nullptr},                        // a key removed
        {"Empty", nullptr, nullptr},                            // a section removed
        {"Desktop Icons", "quoted", "  spaced  "},
    };
    TempDir dir;
    const std::string text = FileBytes(GetParam());
    dir.Write("windows.ini", text);
    dir.Write("portable.ini", text);
    for (const auto& w : writes) {
        auto optional = [](const char* t) { return t ? OptionalText(t) : std::nullopt; };
        ASSERT_TRUE(::WritePrivateProfileStringA(w.section, w.key, w.value,
                                                 (dir.Path() / "windows.ini").string().c_str()));
        ASSERT_TRUE(ProfileSetString(dir.Path() / "portable.ini", optional(w.section), optional(w.key),
                                     optional(w.value))
                        .ok());
        EXPECT_EQ(Meaning(dir.Path() / "portable.ini"), Meaning(dir.Path() / "windows.ini"))
            << "after writing [" << w.section << "] " << (w.key ? w.key : "(section)");
    }
    // Both keep the file's encoding.
    EXPECT_EQ(dir.Read("portable.ini").substr(0, 2), dir.Read("windows.ini").substr(0, 2));
}

INSTANTIATE_TEST_SUITE_P(LineEndings, ProfileAgainstWindows, ::testing::Values("\r\n", "\n", "\r", "utf16"),
                         [](const auto& param) {
                             const std::string name = param.param;
                             return name == "\r\n" ? "CRLF"
                                    : name == "\n" ? "LF"
                                    : name == "\r" ? "CR"
                                                   : "UTF16";
                         });

}  // namespace
}  // namespace glyphmoor::test
