// The behaviour every registry backend owes the registry module, as one suite.
//
// A backend provides a store and a scratch key under HKEY_CURRENT_USER that the
// suite may fill and that is gone afterwards. The machine-folder backend runs
// it here; the Windows build runs it against the real registry.
#pragma once

#include "foundation/RegistryStore.h"

#include <gtest/gtest.h>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace glyphmoor::test {

class RegistryBackend {
public:
    virtual ~RegistryBackend() = default;
    virtual RegistryStore& Store() = 0;
    // A key path such as "HKEY_CURRENT_USER\Software\GlyphmoorContract"; absent at the start.
    [[nodiscard]] virtual std::string Scratch() const = 0;
    // Windows 95 and 98 delete a key with its subkeys; Windows NT refuses.
    [[nodiscard]] virtual bool DeletesSubtrees() const = 0;
};

struct RegistryBackendFactory {
    std::string name;
    std::function<std::unique_ptr<RegistryBackend>()> make;
};

inline void PrintTo(const RegistryBackendFactory& factory, std::ostream* out) {
    *out << factory.name;
}

// The suite; each backend instantiates it with its factories.
class RegistryContract : public ::testing::TestWithParam<RegistryBackendFactory> {
protected:
    void SetUp() override {
        m_backend = GetParam().make();
        m_scratch = m_backend->Scratch();
    }

    RegistryStore& Store() { return m_backend->Store(); }
    [[nodiscard]] std::string Key(std::string_view sub = {}) const {
        return sub.empty() ? m_scratch : m_scratch + "\\" + std::string(sub);
    }

    std::unique_ptr<RegistryBackend> m_backend;
    std::string m_scratch;
};

}  // namespace glyphmoor::test
