#include "foundation/Machine.h"

#include "foundation/MachineEnvironment.h"
#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"

namespace glyphmoor {

namespace {

class FolderMachine final : public Machine {
public:
    FolderMachine(MachineFolder folder, std::unique_ptr<MachineRegistry> registry)
        : m_registry(std::move(registry)), m_environment(std::move(folder), *m_registry) {
        m_registry->SetDeletesSubtrees(m_environment.Version().platformId != kPlatformNt);
    }

    RegistryStore& Registry() override { return *m_registry; }
    const Environment& Env() const override { return m_environment; }
    System& Sys() override { return m_system; }
    Status Save() override { return m_registry->Save(); }

private:
    std::unique_ptr<MachineRegistry> m_registry;
    MachineEnvironment m_environment;
    RecordingSystem m_system;
};

// The program's folder, with its Themes and Favorites, is made the first time
// Glyphmoor works on a machine.
void MakeProgramFolder(const MachineFolder& folder) {
    const std::filesystem::path program = folder.HostPath(kMachineProgramDirectory);
    std::error_code ec;
    std::filesystem::create_directories(program / "Themes", ec);
    std::filesystem::create_directories(program / "Favorites", ec);
}

}  // namespace

Result<std::unique_ptr<Machine>> OpenMachineFolder(const std::filesystem::path& dir) {
    auto folder = TRY(MachineFolder::Open(dir));
    auto registry = TRY(MachineRegistry::Load(folder));
    MakeProgramFolder(folder);
    return std::unique_ptr<Machine>(new FolderMachine(std::move(folder), std::move(registry)));
}

}  // namespace glyphmoor
