#include "cli/FolderIconCommands.h"

#include "cli/IconCommands.h"
#include "folders/FolderIcon.h"
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "icons/IconCatalogue.h"
#include "icons/OwnDefaults.h"
#include "prompts/SilentPrompt.h"

#include <charconv>
#include <filesystem>
#include <ostream>

namespace glyphmoor {

namespace {

// The existing folder or drive PATH names; nothing after saying why.
std::optional<FolderItem> ExistingItem(CliContext& c, const std::string& path) {
    auto item = FolderItemOf(path);
    if (!item) {
        c.err << "glyphmoor-cli: '" << path << "' is not a Windows path of a folder or drive (C:\\...)\n";
        return std::nullopt;
    }
    std::error_code ec;
    if (!std::filesystem::is_directory(c.TheMachine().Env().HostPath(item->path), ec)) {
        c.err << "glyphmoor-cli: the machine has no "
              << (item->kind == FolderItemKind::Drive ? "drive " : "folder ") << item->path
              << "; nothing was changed\n";
        return std::nullopt;
    }
    return item;
}

// Shows a message as the window would, answered silently, and gives its text.
template <typename Message>
std::string MessageText(Machine& machine, Message message) {
    const AppEnvironment app = InitEnvironment(machine.Env());
    AppState state;
    SilentPrompt prompt(machine.Sys(), app.helpFile);
    MsgContext messages{prompt, machine.Registry(), machine.Sys(), app, state};
    message(messages);
    return prompt.Answered().empty() ? std::string() : prompt.Answered().back();
}

}  // namespace

int FolderIconShow(CliContext& c, CommandArgs a) {
    const auto item = ExistingItem(c, a[0]);
    if (!item) {
        return kExitFailed;
    }
    if (const auto icon = ReadFolderIcon(c.TheMachine().Env(), *item)) {
        c.out << icon->file << '\t' << icon->index << '\n';
    } else {
        c.out << kWindowsDefaultIcon << '\n';
    }
    return kExitOk;
}

int FolderIconSet(CliContext& c, CommandArgs a) {
    std::int32_t index = 0;
    const std::string& indexText = a[2];
    const auto [end, ec] = std::from_chars(indexText.data(), indexText.data() + indexText.size(), index);
    if (ec != std::errc() || end != indexText.data() + indexText.size()) {
        c.err << "glyphmoor-cli: the index '" << indexText << "' is not a whole number\n";
        return UsageError(c, "folder-icon set");
    }
    const auto item = ExistingItem(c, a[0]);
    if (!item) {
        return kExitFailed;
    }
    Machine& machine = c.TheMachine();
    const IconLocation asked{a[1], index};
    if (auto why = WhyNotUsable(machine, static_cast<int>(GroupNumber::FolderIcons), asked)) {
        c.err << "glyphmoor-cli: " << *why << "; nothing was changed\n";
        return kExitFailed;
    }
    const IconLocation icon{InSystemFolder(InitEnvironment(machine.Env()), asked.file), index};
    if (Status set = SetFolderIcon(machine, *item, icon); !set.ok()) {
        c.err << "glyphmoor-cli: " << set.reason() << '\n';
        return kExitFailed;
    }
    return kExitOk;
}

int FolderIconRestore(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 2 && a[1] == "--yes";
    if (a.size() == 2 && !yes) {
        return UsageError(c, "folder-icon restore");
    }
    const auto item = ExistingItem(c, a[0]);
    if (!item) {
        return kExitFailed;
    }
    Machine& machine = c.TheMachine();
    if (!ReadFolderIcon(machine.Env(), *item)) {
        c.err << MessageText(machine, [](MsgContext& m) { MsgSelectCustomisedItem(m); }) << '\n';
        return kExitFailed;
    }
    if (!yes) {
        const bool drive = item->kind == FolderItemKind::Drive;
        c.err << MessageText(machine, [drive](MsgContext& m) {
            static_cast<void>(drive ? MsgConfirmRemoveAutorun(m) : MsgConfirmRemoveDesktopIni(m));
        }) << "\n\nglyphmoor-cli: give --yes to continue\n";
        return kExitFailed;
    }
    if (Status removed = RemoveFolderIcon(machine, *item); !removed.ok()) {
        c.err << "glyphmoor-cli: " << removed.reason() << '\n';
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace glyphmoor
