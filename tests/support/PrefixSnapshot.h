// Snapshots of a whole machine folder for the tests of what the program does
// to a real Wine prefix: every registry value outside the program's own key,
// and every file and folder.
#pragma once

#include "foundation/RegistryStore.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace glyphmoor::test {

// Value name ("HKLM\Software\...|Name") to value.
using RegistryValues = std::map<std::string, RegValue>;

// Every value of HKLM and HKU outside HKCU\Software\Veltrane\Glyphmoor (whose
// current and recent themes and records may change).
RegistryValues SnapshotRegistry(const std::filesystem::path& machineDir);

// The values that differ, are gone or are new.
std::vector<std::string> Differences(const RegistryValues& before, const RegistryValues& after);

// Every file and folder below the machine folder, dosdevices/ itself but not
// what its links lead to.
std::set<std::string> Files(const std::filesystem::path& machineDir);

}  // namespace glyphmoor::test
