#include "icons/IconEditing.h"

#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <algorithm>

namespace glyphmoor {

namespace {

constexpr int kCursorsGroup = static_cast<int>(GroupNumber::Cursors);
constexpr int kDesktopGroup = static_cast<int>(GroupNumber::DesktopIcons);
constexpr int kFolderGroup = static_cast<int>(GroupNumber::FolderIcons);
constexpr int kFileGroup = static_cast<int>(GroupNumber::FileIcons);
// " (empty)": the suffix the Recycle Bin's name carries in its first entry.
constexpr std::size_t kRecycleSuffixLength = 8;
// The catalogue name of the bitmap row of the file types.
constexpr std::string_view kBitmapName = "Bitmap Image";

void MarkChanged(AppState& state, int groupNumber) {
    state.groupChanged.at(static_cast<std::size_t>(groupNumber - 1)) = true;
    state.applyEnabled = true;
}

bool IsRecycleBin(const SystemIconEntry& entry) {
    return entry.Key() == kRecycleEmptyName || entry.Key() == kRecycleFullName;
}

// The Recycle Bin's name: its "(empty)" entry's display name less the suffix.
std::string RecycleBinName(const IconGroup& desktop) {
    for (const SystemIconEntry& e : desktop.Entries()) {
        if (e.Key() == kRecycleEmptyName) {
            const std::string& name = e.displayName;
            return name.substr(0,
                               name.size() >= kRecycleSuffixLength ? name.size() - kRecycleSuffixLength : 0);
        }
    }
    return {};
}

void WriteEntry(RegistryStore& registry, const SystemIconEntry& entry) {
    SetRegString(registry, entry.store.path, entry.store.valueName, entry.Current().Text());
}

void WriteGroup(RegistryStore& registry, const IconGroup& group) {
    for (const SystemIconEntry& e : group.Entries()) {
        WriteEntry(registry, e);
    }
}

// Group 1. The bin's unnamed value follows the empty or the full icon as the
// bin was before this write: empty when its unnamed value and its "empty"
// value were the same, compared without regard to case.
void WriteDesktopIcons(RegistryStore& registry, const IconGroup& group) {
    const SystemIconEntry* empty = nullptr;
    const SystemIconEntry* full = nullptr;
    for (const SystemIconEntry& e : group.Entries()) {
        if (e.Key() == kRecycleEmptyName) {
            empty = &e;
        } else if (e.Key() == kRecycleFullName) {
            full = &e;
        } else {
            WriteEntry(registry, e);
        }
    }
    if (empty == nullptr || full == nullptr) {
        return;
    }
    const std::string& binIcons = empty->store.path;
    const bool binIsEmpty =
        EqualsNoCase(GetRegString(registry, binIcons, ""), GetRegString(registry, binIcons, "empty"));
    SetRegString(registry, binIcons, "", (binIsEmpty ? empty : full)->Current().Text());
    WriteEntry(registry, *empty);
    WriteEntry(registry, *full);
}

void WriteNames(RegistryStore& registry, const IconGroup& group, std::string_view recycleBinKey) {
    for (const SystemIconEntry& e : group.Entries()) {
        if (IsRecycleBin(e) || e.classKey.empty() || !IsRenamable(e)) {
            continue;
        }
        SetRegString(registry, e.classKey, "", e.displayName);
    }
    if (group.Number() == kDesktopGroup && !recycleBinKey.empty()) {
        SetRegString(registry, recycleBinKey, "", RecycleBinName(group));
    }
}

void WriteFileIcons(RegistryStore& registry, const IconGroup& group, bool bitmapThumbnail) {
    WriteGroup(registry, group);
    if (group.Find(kBitmapName) == nullptr) {
        return;
    }
    if (bitmapThumbnail) {
        SetRegString(registry, kBmpClassPath, "", "Paint.Picture");
        SetRegString(registry, kBmpShellNewPath, "Command", "");
        SetRegString(registry, kPaintPictureIconPath, "", "%1");
    } else {
        SetRegString(registry, kPaintPictureIconPath, "", kPaintIconLocation);
    }
}

// Pointers: each file alone, in the shell's order, then the fifteen
// SPI_SETCURSORS calls that make the shell load them again.
void WriteCursors(RegistryStore& registry, System& system, const IconGroup& group) {
    for (std::string_view value : kCursorWriteOrder) {
        for (const SystemIconEntry& e : group.Entries()) {
            if (EqualsNoCase(e.store.valueName, value)) {
                SetRegString(registry, e.store.path, e.store.valueName, e.currentFile);
                break;
            }
        }
    }
    for (std::uint32_t i = 0; i < kCursorWriteOrder.size(); ++i) {
        system.SystemParametersInfo(kSpiSetCursors, i, SpiParam{}, 0);
    }
}

}  // namespace

bool IsRenamable(const SystemIconEntry& entry) {
    return std::find(kRenamableNames.begin(), kRenamableNames.end(), entry.Key()) != kRenamableNames.end();
}

EntryButtons ButtonsFor(const SystemIconEntry& entry) {
    if (IsRenamable(entry)) {
        return {.rename = true, .restoreDefault = true};
    }
    return {.rename = false, .restoreDefault = entry.Key() != kZipFileName};
}

std::string PathLabelText(int groupNumber, const SystemIconEntry& entry, bool drawn) {
    if (entry.currentFile == kNoGraphic || !drawn) {
        return std::string(kMissingGraphicText);
    }
    std::string text(kPathLabelPrefix);
    if (groupNumber == kCursorsGroup) {
        const bool isDefault =
            EqualsNoCase(entry.currentFile, entry.defaultFile) && entry.currentIndex == entry.defaultIndex;
        text += isDefault ? std::string(kDefaultCursorText) : entry.currentFile;
    } else {
        text += entry.Current().Text();
    }
    return text;
}

IconLocation StartingLocation(const SystemIconEntry& entry, std::string_view sysDir) {
    if (entry.currentFile == kNoGraphic) {
        return {std::string(sysDir) + "\\shell32.dll", 0};
    }
    return entry.Current();
}

bool ChangeIcon(IconCatalogue& catalogue, AppState& state, int groupNumber, std::size_t position,
                const IconLocation& chosen) {
    SystemIconEntry& entry = catalogue.Group(groupNumber).At(position);
    if (groupNumber == kCursorsGroup) {
        entry.currentFile = chosen.file;
        entry.currentIndex = 0;
    } else {
        if (chosen.Text() == entry.Current().Text()) {
            return false;
        }
        state.rebuildPending = true;
        entry.currentFile = chosen.file;
        entry.currentIndex = chosen.index;
    }
    MarkChanged(state, groupNumber);
    return true;
}

bool RestoreIcon(IconCatalogue& catalogue, AppState& state, int groupNumber, std::size_t position,
                 std::string_view pathLabel) {
    const std::string_view shown = pathLabel.size() > kPathLabelPrefix.size()
                                       ? pathLabel.substr(kPathLabelPrefix.size())
                                       : std::string_view();
    if (EqualsNoCase(shown, kDefaultCursorText)) {
        return false;
    }
    SystemIconEntry& entry = catalogue.Group(groupNumber).At(position);
    if (EqualsNoCase(entry.Default().Text(), shown)) {
        return false;
    }
    entry.currentFile = entry.defaultFile;
    entry.currentIndex = entry.defaultIndex;
    MarkChanged(state, groupNumber);
    return true;
}

std::string RenameStartText(const IconGroup& group, std::size_t position) {
    const SystemIconEntry& entry = group.At(position);
    return IsRecycleBin(entry) ? RecycleBinName(group) : entry.displayName;
}

RenameOutcome RenameIcon(IconCatalogue& catalogue, AppState& state, IconNameMarks& names, int groupNumber,
                         std::size_t position, std::string_view newName) {
    if (newName.empty()) {
        return RenameOutcome::EmptyName;
    }
    IconGroup& group = catalogue.Group(groupNumber);
    SystemIconEntry& entry = group.At(position);
    if (IsRecycleBin(entry)) {
        for (std::size_t i = 0; i < group.Count(); ++i) {
            SystemIconEntry& e = group.At(i);
            if (e.Key() == kRecycleEmptyName) {
                e.displayName = std::string(newName) + " (empty)";
            } else if (e.Key() == kRecycleFullName) {
                e.displayName = std::string(newName) + " (full)";
            }
        }
    } else {
        if (newName == entry.displayName) {
            return RenameOutcome::Unchanged;
        }
        if (entry.catalogueName.empty()) {
            // The catalogue name keeps the entry's stable key once the shown
            // name is the user's.
            entry.catalogueName = entry.displayName;
        }
        entry.displayName = std::string(newName);
    }
    (groupNumber == kDesktopGroup ? names.desktopNamesChanged : names.folderNamesChanged) = true;
    state.rebuildPending = true;
    state.applyEnabled = true;
    return RenameOutcome::Renamed;
}

void RestoreAll(IconCatalogue& catalogue, RegistryStore& registry, AppState& state, bool cursors) {
    if (cursors && !catalogue.CursorsBuilt()) {
        catalogue.BuildCursorCatalogue();
    }
    const int first = cursors ? kCursorsGroup : 1;
    const int last = cursors ? kCursorsGroup : kFileGroup;
    for (int number = first; number <= last; ++number) {
        IconGroup& group = catalogue.Group(number);
        for (std::size_t i = 0; i < group.Count(); ++i) {
            SystemIconEntry& e = group.At(i);
            e.currentFile = e.defaultFile;
            e.currentIndex = e.defaultIndex;
        }
        group.Refresh();
    }
    state.themeLoaded = true;
    SetCurrentTheme(registry, state, "");
    state.rebuildPending = true;
    state.applyEnabled = true;
}

void ApplyIcons(IconCatalogue& catalogue, RegistryStore& registry, System& system, const AppState& state,
                const IconNameMarks& names, std::optional<bool> bitmapThumbnail) {
    const bool thumbnail =
        bitmapThumbnail.value_or(GetRegString(registry, kPaintPictureIconPath, "") == "%1");
    const auto marked = [&](GroupNumber n) {
        return state.groupChanged.at(static_cast<std::size_t>(static_cast<int>(n) - 1));
    };
    const std::string recycleBinKey =
        catalogue.Detected() ? catalogue.State().ClassKey(DesktopObject::RecycleBin) : std::string();

    if (marked(GroupNumber::DesktopIcons)) {
        WriteDesktopIcons(registry, catalogue.Group(GroupNumber::DesktopIcons));
    }
    if (names.desktopNamesChanged) {
        WriteNames(registry, catalogue.Group(GroupNumber::DesktopIcons), recycleBinKey);
    }
    if (marked(GroupNumber::StartIcons)) {
        WriteGroup(registry, catalogue.Group(GroupNumber::StartIcons));
    }
    if (marked(GroupNumber::FolderIcons)) {
        WriteGroup(registry, catalogue.Group(GroupNumber::FolderIcons));
    }
    if (names.folderNamesChanged) {
        WriteNames(registry, catalogue.Group(GroupNumber::FolderIcons), {});
    }
    for (GroupNumber n : {GroupNumber::DriveIcons, GroupNumber::OtherIcons}) {
        if (marked(n)) {
            WriteGroup(registry, catalogue.Group(n));
        }
    }
    if (marked(GroupNumber::FileIcons)) {
        WriteFileIcons(registry, catalogue.Group(GroupNumber::FileIcons), thumbnail);
    }
    if (marked(GroupNumber::Cursors)) {
        WriteCursors(registry, system, catalogue.Group(GroupNumber::Cursors));
    }
    StoreCurrentTheme(registry, state.currentTheme);
}

void ApplyIconChanges(IconCatalogue& catalogue, RegistryStore& registry, System& system, AppState& state,
                      IconNameMarks& names, std::optional<bool> bitmapThumbnail) {
    if (state.themeLoaded) {
        state.groupChanged.fill(true);
    }
    if (catalogue.Built()) {
        ApplyIcons(catalogue, registry, system, state, names, bitmapThumbnail);
    }
    state.groupChanged.fill(false);
    names = {};
    state.themeLoaded = false;
    state.applyEnabled = false;
}

}  // namespace glyphmoor
