// StartupLists: the programs Windows starts or knows how to remove, as the
// Miscellaneous tab lists them: the uninstall list (the Uninstall key's
// programs, each with its display name and uninstall command) and the Run
// and RunServices keys of the machine and the Run key of the user (each value
// a name and a command).
//
// Edits are queued, never written at once: a deletion of any entry, an
// addition to a Run list. Apply carries them out in the order they were
// made. Deleting an uninstall entry removes its key (and everything in it)
// from the list; the program never runs an uninstaller, and adds nothing to
// the uninstall list: installers put programs there.
#pragma once

#include "foundation/RegistryStore.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

enum class StartupList { Uninstall, Run, RunServices, UserRun };

struct StartupListInfo {
    StartupList list;
    std::string_view cliName;  // uninstall, run, run-services, user-run
    std::string_view caption;  // the tree's group node
    std::string_view path;     // the RegistryPath of the key
};

std::span<const StartupListInfo> StartupListInfos();
const StartupListInfo& InfoOf(StartupList list);
std::optional<StartupList> StartupListByName(std::string_view cliName);

struct StartupEntry {
    StartupList list = StartupList::Run;
    // The value name, or for the uninstall list the subkey's name.
    std::string name;
    // What the list shows: the name, or the uninstall entry's "DisplayName".
    std::string text;
    // The command, or the uninstall entry's "UninstallString".
    std::string command;
};

// The entries of a list as the registry holds them, in the key's order. An
// uninstall subkey without a "DisplayName" is left out, as Windows leaves it
// out of its own list; Run values that are not strings are left out.
std::vector<StartupEntry> ReadStartupList(RegistryStore& registry, StartupList list);

struct StartupChange {
    bool add = false;
    StartupList list = StartupList::Run;
    std::string name;
    std::string command;
};

class StartupLists {
public:
    // Reads the four lists; sets Loaded. Reading never writes.
    void Load(RegistryStore& registry);
    [[nodiscard]] bool Loaded() const { return m_loaded; }

    // The entries as they will be after Apply: read, less queued deletions,
    // with queued additions.
    [[nodiscard]] const std::vector<StartupEntry>& Entries() const { return m_entries; }
    // The entry of a list named `name`: by its name, else (the uninstall list)
    // by its text; compared without regard to case. Null when none, or when
    // the text names more than one.
    [[nodiscard]] const StartupEntry* Find(StartupList list, std::string_view name) const;

    // Queues the deletion of the entry; false when the list has none such.
    bool QueueDelete(StartupList list, std::string_view name);
    // Queues a value of a Run list (replacing one of the same name); false
    // for the uninstall list or an empty name or command.
    bool QueueAdd(StartupList list, std::string_view name, std::string_view command);
    [[nodiscard]] const std::vector<StartupChange>& Pending() const { return m_pending; }

    // Writes the queued changes in order, then forgets them.
    void Apply(RegistryStore& registry);

private:
    std::vector<StartupEntry> m_entries;
    std::vector<StartupChange> m_pending;
    bool m_loaded = false;
};

}  // namespace glyphmoor
