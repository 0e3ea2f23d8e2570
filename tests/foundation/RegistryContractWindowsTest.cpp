// The registry contract on the real registry of the Windows the tests run on
// (under Wine in the project's own runs).
#include "RegistryContract.h"

#include "foundation/WindowsMachine.h"
#include "foundation/WindowsRegistry.h"
#include "foundation/modRegistry.h"

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

INSTANTIATE_TEST_SUITE_P(Windows, RegistryContract,
                         ::testing::Values(RegistryBackendFactory{
                             "WindowsRegistry", [] { return std::make_unique<WindowsBackend>(); }}),
                         [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace glyphmoor::test
