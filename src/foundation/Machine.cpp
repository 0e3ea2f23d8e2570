#include "foundation/Machine.h"

#include "foundation/DefaultMachine.h"
#include "foundation/MachineEnvironment.h"
#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"
#include "foundation/ProgramFolder.h"

namespace glyphmoor {

namespace {

class FolderMachine final : public Machine {
public:
    FolderMachine(MachineFolder folder, std::unique_ptr<MachineRegistry> registry)
        : m_folder(folder),
          m_registry(std::move(registry)),
          m_baseline(*m_registry),
          m_environment(std::move(folder), *m_registry) {
        m_registry->SetDeletesSubtrees(m_environment.Version().platformId != kPlatformNt);
    }

    BaselineRegistry& Registry() override { return m_baseline; }
    const Environment& Env() const override { return m_environment; }
    System& Sys() override { return m_system; }
    Status Save() override {
        if (m_baseline.WroteMachine()) {
            Status made = EnsureProgramFolder(m_environment, m_baseline, SeedDirs());
            if (!made) {
                return made;
            }
        }
        Status saved = m_registry->Save();
        if (saved) {
            m_baseline.MarkSaved();
        }
        return saved;
    }
    [[nodiscard]] std::string Description() const override {
        std::error_code ec;
        const std::string dir = m_folder.Dir().string();
        if (std::filesystem::equivalent(m_folder.Dir(), DefaultMachineDir(), ec)) {
            return "the default machine (" + dir + ")";
        }
        return (m_environment.Kind() == MachineKind::WinePrefix ? "Wine prefix " : "machine folder ") + dir;
    }
    [[nodiscard]] std::optional<std::string> StaleWarning() const override {
        if (!m_folder.RunningWineServer()) {
            return std::nullopt;
        }
        return "a wineserver is running for " + m_folder.Dir().string() +
               ": what is read may be older than what the server holds (stop it with wineserver -k)";
    }

private:
    MachineFolder m_folder;
    std::unique_ptr<MachineRegistry> m_registry;
    BaselineRegistry m_baseline;
    MachineEnvironment m_environment;
    RecordingSystem m_system;
};

}  // namespace

Result<std::unique_ptr<Machine>> OpenMachineFolder(const std::filesystem::path& dir) {
    auto folder = TRY(MachineFolder::Open(dir));
    auto registry = TRY(MachineRegistry::Load(folder));
    return std::unique_ptr<Machine>(new FolderMachine(std::move(folder), std::move(registry)));
}

}  // namespace glyphmoor
