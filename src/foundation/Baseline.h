// Baseline: what a machine held before Glyphmoor first changed it, and the way
// back to it.
//
// BaselineRegistry sits between the program and a machine's registry. Before
// the program first changes a value, or makes a key, outside its own settings
// key, it records what was there: the value with its exact type and bytes, or
// that there was none; the key, when it did not exist. Files and folders the
// program makes on the machine are recorded by their Windows paths. The
// records live in the machine's own registry under kBaselinePath and are
// saved with the change that caused them, so a saved change always has its
// baseline beside it. A file the program changes or removes but did not make
// (Msdos.sys, a folder's desktop.ini) is recorded with its bytes and
// attributes, a folder whose attributes it changes with those.
//
// UndoAll returns every recorded value to its baseline, puts back the files
// and attributes it recorded, removes the keys the program made (only when
// nothing else lives in them) and the files and folders it made (a folder
// only when it is empty), then forgets the baseline: the next change records
// a new one.
#pragma once

#include "foundation/Environment.h"
#include "foundation/RegistryStore.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The program's own key: its settings are not part of the machine's baseline.
inline constexpr std::string_view kProgramKeyPath = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor";
inline constexpr std::string_view kBaselinePath =
    "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Baseline";

// One value as the baseline remembers it: where it is, and its data before
// the program first changed it (nothing: the value did not exist).
struct BaselineValue {
    std::string key;  // a RegistryPath ("HKEY_LOCAL_MACHINE\...")
    std::string name;
    std::optional<RegValue> data;
};

// A file or folder the program changed but did not make, as it was before:
// the bytes of a file, the attributes of either.
struct BaselineFile {
    std::string path;  // a Windows path of the machine
    std::optional<std::string> bytes;
    std::optional<std::uint32_t> attributes;
};

// The largest file whose bytes the baseline keeps: the small system files the
// program edits (Msdos.sys, desktop.ini, autorun.inf) are far smaller. Of a
// larger one only the attributes are kept.
inline constexpr std::uint64_t kMostRecordedFileBytes = 64 * 1024;

class BaselineRegistry final : public RegistryStore {
public:
    // `inner` must outlive this object. Existing records are read at once.
    explicit BaselineRegistry(RegistryStore& inner);

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

    // The program changed something outside its own key since it was made or
    // since the last MarkSaved.
    [[nodiscard]] bool WroteMachine() const { return m_wroteMachine; }
    void MarkSaved() { m_wroteMachine = false; }

    // The program made this file or folder (a Windows path of the machine).
    void RecordCreatedFile(std::string_view windowsPath);
    // The program is about to change or remove the file or folder at host
    // (windowsPath on the machine): the first time, what it holds now is
    // recorded, or that the program makes it when it does not exist. True
    // when a record was added, which must be saved before the change.
    bool RecordFileBefore(std::string_view windowsPath, const std::filesystem::path& host);

    // The store under the records, for reading and restoring without recording.
    [[nodiscard]] RegistryStore& Inner() { return m_inner; }
    // Learns again which values, keys and files have records, from the store
    // under it: when made, and after UndoAll has forgotten them there, so
    // that the next change records a new baseline.
    void ReadRecords();

private:
    struct OpenPath {
        RootKey root = RootKey::None;
        std::string subkey;
    };

    void RecordValue(const OpenPath& path, std::string_view name);
    void RecordMissingKeys(RootKey root, std::string_view subkey);
    void RecordSubtree(const OpenPath& path);
    bool Outside(const OpenPath& path);
    std::string AddRecord(std::string_view list);

    RegistryStore& m_inner;
    std::map<RegHandle, OpenPath> m_paths;
    std::set<std::string> m_recordedValues;
    std::set<std::string> m_recordedKeys;
    std::set<std::string> m_recordedFiles;
    std::map<std::string, std::uint32_t, std::less<>> m_nextRecord;
    bool m_wroteMachine = false;
};

// The value as the baseline holds it: nothing when the program never changed
// it; otherwise its data before the first change (nothing inside: there was
// no value).
std::optional<std::optional<RegValue>> RecordedValue(RegistryStore& registry, std::string_view keyPath,
                                                     std::string_view name);

// The value as it was before the program first changed it: the recorded
// baseline, or what the machine holds now when it never changed it.
std::optional<RegValue> BaselineValueOf(RegistryStore& registry, std::string_view keyPath,
                                        std::string_view name);

// The text of a string value (up to its first NUL); empty for other types.
std::string RegValueText(const RegValue& value);

// Puts a value back as the baseline holds it: the recorded data byte for byte,
// or no value. False when the program never changed the value (nothing to do).
bool RestoreRecordedValue(RegistryStore& registry, std::string_view keyPath, std::string_view name);

// What undoing would do, in the order it does it.
struct UndoPlan {
    // Values whose current data differs from the baseline.
    std::vector<BaselineValue> values;
    // Keys the program made that would go (when empty), deepest first.
    std::vector<std::string> keys;
    // Files and folders the program made that still exist, deepest first.
    std::vector<std::string> files;
    // Files and folders it changed that differ from what they were.
    std::vector<BaselineFile> changedFiles;

    [[nodiscard]] bool Empty() const {
        return values.empty() && keys.empty() && files.empty() && changedFiles.empty();
    }
};

// Reads the baseline of a registry (the inner store of a BaselineRegistry, or
// any store that holds the records) and compares it with the machine.
UndoPlan PlanUndo(RegistryStore& registry, const Environment& env);

// One line a step, for showing before the undo: what returns and to what.
std::vector<std::string> DescribeUndo(const UndoPlan& plan);

// Carries out the whole baseline (not only the plan's differences): every
// recorded value, file and attribute back, made keys and files removed, the
// records removed. The registry still has to be saved by the caller. Files
// that cannot be removed or put back are named in the result.
std::vector<std::string> UndoAll(RegistryStore& registry, const Environment& env);

}  // namespace glyphmoor
