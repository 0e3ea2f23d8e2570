#include "foundation/Machine.h"

#include "foundation/DefaultMachine.h"
#include "foundation/FileJournal.h"
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
    // The program's folder is planned (and recorded) at the first save after
    // a write to the machine; its folders and its two files are made in the
    // registry's change, so that no record ever names a file a kill kept from
    // being written.
    Status Save() override {
        ProgramFolderPlan plan;
        if (m_baseline.WroteMachine()) {
            plan = TRY(PlanProgramFolder(m_environment, m_baseline, SeedDirs()));
        }
        FolderChanges folders = m_pendingFolders;
        folders.make.insert(folders.make.begin(), plan.folders.begin(), plan.folders.end());
        std::vector<FileReplacement> files = m_pendingFiles;
        for (const ProgramFolderPlan::File& file : plan.files) {
            files.push_back(FileReplacement{file.file, TextPieces::Borrowing(file.bytes), std::nullopt});
        }
        TRY(m_registry->Save(folders, files));
        m_baseline.MarkSaved();
        m_pendingFolders = {};
        m_pendingFiles.clear();
        return {};
    }
    Status MakeFolder(const std::string& windowsPath) override {
        m_baseline.RecordCreatedFile(windowsPath);
        m_pendingFolders.make.push_back(m_environment.HostPath(windowsPath));
        return {};
    }
    Status WriteDriveFile(const std::string& windowsPath, std::string bytes,
                          std::optional<std::uint32_t> attributes) override {
        const std::filesystem::path host = m_environment.HostPath(windowsPath);
        m_baseline.RecordFileBefore(windowsPath, host);
        for (FileReplacement& pending : m_pendingFiles) {
            if (pending.file == host) {
                pending = FileReplacement{host, TextPieces(std::move(bytes)), attributes};
                return {};
            }
        }
        m_pendingFiles.push_back(FileReplacement{host, TextPieces(std::move(bytes)), attributes});
        return {};
    }
    Status RemoveFolder(const std::string& windowsPath) override {
        m_pendingFolders.remove.push_back(m_environment.HostPath(windowsPath));
        return {};
    }
    Status MakeProgramFolder() override {
        const ProgramFolderPlan plan = TRY(PlanProgramFolder(m_environment, m_baseline, SeedDirs()));
        if (plan.empty()) {
            return {};
        }
        return Save();
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
    // Changes of drive C: made with the next save, in the same change as the hives.
    FolderChanges m_pendingFolders;
    std::vector<FileReplacement> m_pendingFiles;
};

}  // namespace

Result<std::unique_ptr<Machine>> OpenMachineFolder(const std::filesystem::path& dir) {
    auto folder = TRY(MachineFolder::Open(dir));
    auto registry = TRY(MachineRegistry::Load(folder));
    return std::unique_ptr<Machine>(new FolderMachine(std::move(folder), std::move(registry)));
}

}  // namespace glyphmoor
