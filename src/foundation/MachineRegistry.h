// MachineRegistry: the registry of a machine folder.
//
// The three hive files are read once. Changes are made in memory and recorded;
// Save() writes the changed hives back under the folder's lock, after merging
// what another process saved since it was read (the recorded changes are
// replayed over the newer file), so that neither side's changes are lost.
// The hives of one save are replaced together through the folder's journal
// (FileJournal.h): after a kill at any moment, the next load or save finishes
// or drops the save, so every hive is old or every hive is new.
//
// The predefined keys map as on Windows 95, 98 and NT 4.0:
//   HKEY_CLASSES_ROOT    HKEY_LOCAL_MACHINE\Software\Classes
//   HKEY_CURRENT_CONFIG  HKEY_LOCAL_MACHINE\System\CurrentControlSet\Hardware Profiles\Current
//   HKEY_USERS           .Default (userdef.reg) and the current user (user.reg)
//   HKEY_DYN_DATA, HKEY_PERFORMANCE_DATA: no store; opening them fails.
// Wine's link keys (CurrentControlSet is one) are followed.
#pragma once

#include "foundation/FileIo.h"
#include "foundation/FileJournal.h"
#include "foundation/Hive.h"
#include "foundation/MachineFolder.h"
#include "foundation/RegistryStore.h"
#include "foundation/Result.h"
#include "foundation/TextPieces.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace glyphmoor {

class MachineRegistry final : public RegistryStore {
public:
    // Fails with file and line when a hive file is malformed.
    static Result<std::unique_ptr<MachineRegistry>> Load(const MachineFolder& folder);

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

    // Windows 95 and 98 delete a key with its subkeys; Windows NT refuses a key
    // that has subkeys. Set from the machine's flavour.
    void SetDeletesSubtrees(bool deletes) { m_deletesSubtrees = deletes; }
    [[nodiscard]] bool HasUnsavedChanges() const;
    Status Save();
    // The same, with folders made and removed and other files replaced in the
    // same change as the hives: after a kill, either the hives are new and
    // the rest changed, or the hives are old and nothing else is.
    Status Save(const FolderChanges& folders, const std::vector<FileReplacement>& files);

private:
    struct Change {
        enum class Kind { CreateKey, SetValue, DeleteValue, DeleteKey };
        Kind kind;
        std::string path;  // key path within the hive
        std::string name;  // value or subkey name
        RegValue value;
    };
    struct LoadedHive {
        Hive hive;
        std::filesystem::path file;
        std::string relativeRoot;  // of a hive made anew
        FileStamp stamp;
        std::vector<Change> changes;
    };
    // Where a handle points: a key of a hive by its path, or the virtual
    // HKEY_USERS root, which lists the two user hives.
    struct Location {
        std::optional<HiveId> hive;  // empty for HKEY_USERS itself
        std::string path;
    };

    explicit MachineRegistry(MachineFolder folder) : m_folder(std::move(folder)) {}
    static Result<LoadedHive> LoadHive(const std::filesystem::path& file, std::string_view relativeRoot);
    LoadedHive& HiveOf(HiveId id) { return m_hives[static_cast<std::size_t>(id)]; }
    std::optional<Location> Resolve(RootKey root, std::string_view subkey, bool create);
    std::optional<Location> Walk(Location start, std::string_view subkey, bool create, int depth);
    std::optional<Location> LinkTarget(const HiveKey& link) const;
    HiveKey* KeyAt(const Location& location);
    const Location* Handle(RegHandle key) const;
    RegHandle NewHandle(Location location);
    void Record(HiveId hive, Change change);
    static void Replay(Hive& hive, const Change& change, std::uint64_t now);
    // The hive's file as it is to be written, merged with a newer file.
    Result<TextPieces> MergedText(HiveId id);
    Status LoadAll();

    MachineFolder m_folder;
    std::array<LoadedHive, 3> m_hives;
    std::string m_userSid;
    std::map<RegHandle, Location> m_handles;
    RegHandle m_nextHandle = 1;
    bool m_deletesSubtrees = true;
};

}  // namespace glyphmoor
