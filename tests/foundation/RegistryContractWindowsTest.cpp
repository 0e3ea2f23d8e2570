// The registry contract on the real registry of the Windows the tests run on
// (under Wine in the project's own runs).
#include "RegistryContract.h"

#include "foundation/WindowsMachine.h"
#include "foundation/WindowsRegistry.h"
#include "foundation/modRegistry.h"

#include <windows.h>

namespace glyphmoor::test {
namespace {

constexpr std::string_view kScratch = "HKEY_CURRENT_USER\\Software\\GlyphmoorContract";

// Windows NT deletes one key at a time: children first.
void DeleteTree(RegistryStore& store, const std::string& parent, const std::string& name) {
    const std::string path = parent + "\\" + name;
    std::vector<std::string> children;
    EnumRegKeys(store, path, children);
    for (const auto& child : children) {
        DeleteTree(store, path, child);
    }
    DeleteRegKey(store, parent, name);
}

class WindowsBackend final : public RegistryBackend {
public:
    WindowsBackend() { Clean(); }
    ~WindowsBackend() override { Clean(); }
    WindowsBackend(const WindowsBackend&) = delete;
    WindowsBackend& operator=(const WindowsBackend&) = delete;

    RegistryStore& Store() override { return m_registry; }
    [[nodiscard]] std::string Scratch() const override { return std::string(kScratch); }
    [[nodiscard]] bool DeletesSubtrees() const override {
        return WindowsEnvironment().Version().platformId != kPlatformNt;
    }

private:
    void Clean() { DeleteTree(m_registry, "HKEY_CURRENT_USER\\Software", "GlyphmoorContract"); }
    WindowsRegistry m_registry;
};

// Texts as Windows keeps their bytes, stored past the registry module with the
// wide function, read by the registry module and by RegQueryValueExA: both
// give the same bytes.
TEST(WindowsRegistryTexts, ReadsCountWhatRegQueryValueExACounts) {
    struct Case {
        const char* what;
        DWORD type;
        std::u16string units;  // stored with the count of these, a non-NUL unit after them
    };
    const Case cases[] = {
        {"empty", REG_SZ, u""},
        {"without its NUL", REG_SZ, u"ab"},
        {"with its NUL", REG_SZ, std::u16string(u"ab\0", 3)},
        {"expandable without its NUL", REG_EXPAND_SZ, u"%a%"},
        {"expandable with its NUL", REG_EXPAND_SZ, std::u16string(u"%a%\0", 4)},
    };
    WindowsBackend backend;
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\GlyphmoorContract", 0, nullptr, 0,
                                KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    for (const auto& c : cases) {
        std::u16string buffer = c.units + u"x";
        ASSERT_EQ(::RegSetValueExW(key, L"v", 0, c.type, reinterpret_cast<const BYTE*>(buffer.data()),
                                   static_cast<DWORD>(c.units.size() * 2)),
                  ERROR_SUCCESS);
        std::string ansi(64, '\x7f');
        DWORD size = static_cast<DWORD>(ansi.size());
        ASSERT_EQ(::RegQueryValueExA(key, "v", nullptr, nullptr, reinterpret_cast<BYTE*>(ansi.data()), &size),
                  ERROR_SUCCESS);
        ansi.resize(size);
        EXPECT_EQ(GetRegBinary(backend.Store(), std::string(kScratch), "v"), ansi) << c.what;
    }
    ::RegCloseKey(key);
}

INSTANTIATE_TEST_SUITE_P(Windows, RegistryContract,
                         ::testing::Values(RegistryBackendFactory{
                             "WindowsRegistry", [] { return std::make_unique<WindowsBackend>(); }}),
                         [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace glyphmoor::test
