#include "folders/FolderIcon.h"

#include "foundation/HostFiles.h"
#include "foundation/modProfile.h"

#include <charconv>
#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kShellClassInfo = ".ShellClassInfo";
constexpr std::string_view kIconFileKey = "IconFile";
constexpr std::string_view kIconIndexKey = "IconIndex";
constexpr std::string_view kAutorunSection = "AUTORUN";
constexpr std::string_view kAutorunIconKey = "Icon";
// The icon file is a path: read it into a buffer of MAX_PATH.
constexpr std::uint32_t kPathSize = 260;
// The answer of the removal questions that goes ahead: "OK", their button 1.
constexpr std::int16_t kRemoveOk = 1;

// A decimal index as the shell reads one: blanks, a sign, digits; 0 otherwise.
std::int32_t IndexOf(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    std::int32_t index = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), index);
    return ec == std::errc() ? index : 0;
}

Status ExistingItem(const Environment& env, const FolderItem& item) {
    std::error_code ec;
    if (!fs::is_directory(env.HostPath(item.path), ec)) {
        return Fail("the machine has no " +
                    std::string(item.kind == FolderItemKind::Drive ? "drive " : "folder ") + item.path);
    }
    return {};
}

// Tells the shell to reload its icons, as Undo all does: the icon metrics
// changed, with no registry value touched.
void RefreshShellIcons(System& system) {
    system.BroadcastSettingChange(kSpiSetIconMetrics, std::nullopt);
}

}  // namespace

std::optional<IconLocation> ReadFolderIcon(const Environment& env, const FolderItem& item) {
    const fs::path file = env.HostPath(IconFileOf(item));
    if (item.kind == FolderItemKind::Drive) {
        const std::string text = ReadProfileValue(file, kAutorunSection, kAutorunIconKey, {}, kPathSize);
        if (text.empty()) {
            return std::nullopt;
        }
        // An "Icon" without an index is the file's first icon.
        return SplitIconLocation(text).value_or(IconLocation{text, 0});
    }
    std::string iconFile = ReadProfileValue(file, kShellClassInfo, kIconFileKey, {}, kPathSize);
    if (iconFile.empty()) {
        return std::nullopt;
    }
    return IconLocation{std::move(iconFile), IndexOf(ReadProfileValue(file, kShellClassInfo, kIconIndexKey))};
}

std::string IconFileInItem(const FolderItem& item, std::string_view file) {
    if (IsDriveLetterPath(file) || file.starts_with("\\\\")) {
        return std::string(file);
    }
    if (file.starts_with('\\')) {
        return item.path.substr(0, 2) + std::string(file);
    }
    return ChildOf(item, file).path;
}

namespace {

// The way back, saved before the change: Undo all removes the icon file the
// program makes, or puts back the one it changes, and gives the folder back
// its attributes. Returns the icon file on the host.
Result<fs::path> RecordBeforeChange(Machine& machine, const FolderItem& item) {
    const Environment& env = machine.Env();
    const std::string iniPath = IconFileOf(item);
    bool recorded = machine.Registry().RecordFileBefore(iniPath, env.HostPath(iniPath));
    if (item.kind == FolderItemKind::Folder) {
        recorded = machine.Registry().RecordFileBefore(item.path, env.HostPath(item.path)) || recorded;
    }
    if (recorded) {
        TRY(machine.Save());
    }
    return env.HostPath(iniPath);
}

}  // namespace

Status SetFolderIcon(Machine& machine, const FolderItem& item, const IconLocation& icon) {
    const Environment& env = machine.Env();
    TRY(ExistingItem(env, item));
    const fs::path ini = TRY(RecordBeforeChange(machine, item));
    if (item.kind == FolderItemKind::Drive) {
        TRY(WriteProfileValue(ini, kAutorunSection, kAutorunIconKey, icon.Text()));
    } else {
        TRY(WriteProfileValue(ini, kShellClassInfo, kIconFileKey, icon.file));
        TRY(WriteProfileValue(ini, kShellClassInfo, kIconIndexKey, std::to_string(icon.index)));
        TRY(WriteHostAttributes(env.HostPath(item.path), kAttrSystem));
        TRY(WriteHostAttributes(ini, kAttrHidden | kAttrArchive));
    }
    RefreshShellIcons(machine.Sys());
    return {};
}

Status RemoveFolderIcon(Machine& machine, const FolderItem& item) {
    const Environment& env = machine.Env();
    TRY(ExistingItem(env, item));
    const fs::path ini = TRY(RecordBeforeChange(machine, item));
    std::error_code ec;
    fs::remove(ini, ec);
    if (ec) {
        return Fail("Cannot delete " + IconFileOf(item) + ": " + ec.message());
    }
    if (item.kind == FolderItemKind::Folder) {
        TRY(WriteHostAttributes(env.HostPath(item.path), kAttrNormal));
    }
    RefreshShellIcons(machine.Sys());
    return {};
}

FolderRestore RestoreFolderIcon(MsgContext& c, Machine& machine, const FolderItem& item, Status* failure) {
    if (!ReadFolderIcon(machine.Env(), item)) {
        MsgSelectCustomisedItem(c);
        return FolderRestore::NotCustomised;
    }
    const std::int16_t answer =
        item.kind == FolderItemKind::Drive ? MsgConfirmRemoveAutorun(c) : MsgConfirmRemoveDesktopIni(c);
    if (answer != kRemoveOk) {
        return FolderRestore::Declined;
    }
    Status removed = RemoveFolderIcon(machine, item);
    if (failure != nullptr) {
        *failure = std::move(removed);
    }
    return FolderRestore::Restored;
}

}  // namespace glyphmoor
