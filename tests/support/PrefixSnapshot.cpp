#include "support/PrefixSnapshot.h"

#include "foundation/Machine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {

namespace {

namespace fs = std::filesystem;
using Values = RegistryValues;

bool ProgramKey(const std::string& path) {
    return path.find("\\Software\\Veltrane\\Glyphmoor") != std::string::npos;
}

void Walk(RegistryStore& store, RootKey root, const std::string& subkey, const std::string& shown,
          Values& out) {
    RegHandle key = kNoHandle;
    if (store.OpenKey(root, subkey, RegAccess::Read, key) != kErrorSuccess) {
        return;
    }
    std::string name;
    RegValue value;
    for (std::uint32_t i = 0; store.EnumValue(key, i, name, value) == kErrorSuccess; ++i) {
        out[shown + "|" + name] = value;
    }
    std::vector<std::string> subkeys;
    for (std::uint32_t i = 0; store.EnumKey(key, i, name) == kErrorSuccess; ++i) {
        subkeys.push_back(name);
    }
    store.CloseKey(key);
    for (const std::string& sub : subkeys) {
        const std::string path = subkey.empty() ? sub : subkey + "\\" + sub;
        if (!ProgramKey("\\" + path)) {
            Walk(store, root, path, shown + "\\" + sub, out);
        }
    }
}

}  // namespace

RegistryValues SnapshotRegistry(const fs::path& dir) {
    auto machine = OpenMachineFolder(dir);
    EXPECT_TRUE(machine.ok()) << machine.reason();
    RegistryValues out;
    Walk((*machine)->Registry().Inner(), RootKey::LocalMachine, "", "HKLM", out);
    Walk((*machine)->Registry().Inner(), RootKey::Users, "", "HKU", out);
    return out;
}

std::vector<std::string> Differences(const RegistryValues& before, const RegistryValues& after) {
    std::vector<std::string> out;
    for (const auto& [name, value] : before) {
        const auto found = after.find(name);
        if (found == after.end() || found->second != value) {
            out.push_back(name);
        }
    }
    for (const auto& [name, value] : after) {
        if (!before.contains(name)) {
            out.push_back(name);
        }
    }
    return out;
}

std::set<std::string> Files(const fs::path& dir) {
    std::set<std::string> out;
    for (auto it = fs::recursive_directory_iterator(dir); it != fs::recursive_directory_iterator(); ++it) {
        if (it->path().filename() == "dosdevices") {
            it.disable_recursion_pending();
        }
        out.insert(fs::relative(it->path(), dir).string());
    }
    return out;
}

}  // namespace glyphmoor::test
