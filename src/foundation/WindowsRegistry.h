// WindowsRegistry: the real registry of the Windows the program runs on,
// through the wide registry functions (UTF-16 at the boundary).
#pragma once

#include "foundation/RegistryStore.h"

#include <map>

namespace glyphmoor {

class WindowsRegistry final : public RegistryStore {
public:
    WindowsRegistry() = default;
    ~WindowsRegistry() override;
    WindowsRegistry(const WindowsRegistry&) = delete;
    WindowsRegistry& operator=(const WindowsRegistry&) = delete;

    long OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) override;
    long CreateKey(RootKey root, std::string_view subkey, RegHandle& out) override;
    long CloseKey(RegHandle key) override;
    long QueryValue(RegHandle key, std::string_view name, RegValue& out) override;
    long SetValue(RegHandle key, std::string_view name, const RegValue& value) override;
    long DeleteValue(RegHandle key, std::string_view name) override;
    long DeleteSubKey(RegHandle key, std::string_view name) override;
    long QueryInfoKey(RegHandle key, RegKeyInfo& out) override;
    long EnumKey(RegHandle key, std::uint32_t index, std::string& name) override;
    long EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) override;

private:
    // Open keys by handle; the handle values are the HKEYs themselves.
    std::map<RegHandle, void*> m_open;
};

}  // namespace glyphmoor
