#include "icons/IconEditing.h"

#include "foundation/Baseline.h"
#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"
#include "icons/OwnDefaults.h"

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

// How the apply step writes: on the described Windows every entry of a marked
// group is written, as the program always has; on a machine with defaults of
// its own only what the user changed, and a default put back is the machine's
// own value, byte for byte, or no value.
struct EntryWriter {
    RegistryStore& registry;
    const AppEnvironment& app;
    bool ownDefaults = false;

    // `mayRemove`: putting the default back may remove the value (not for a
    // value the entry only follows, such as the Recycle Bin's unnamed one).
    void Text(const IconStore& store, const SystemIconEntry& entry, const std::string& text,
              bool mayRemove = true) const {
        if (store.path.empty()) {
            return;  // a file type without a class has nowhere to go
        }
        if (!ownDefaults) {
            SetRegString(registry, store.path, store.valueName, text);
            return;
        }
        if (!entry.IconChanged()) {
            return;
        }
        if (entry.Current() == entry.Default()) {
            if (RestoreRecordedValue(registry, store.path, store.valueName)) {
                return;
            }
            if (entry.defaultAbsent) {
                if (mayRemove) {
                    DeleteRegValue(registry, store.path, store.valueName);
                }
                return;
            }
        }
        SetRegString(registry, store.path, store.valueName, text);
    }

    void Entry(const SystemIconEntry& entry) const { Text(entry.store, entry, entry.Current().Text()); }

    void Group(const IconGroup& group) const {
        for (const SystemIconEntry& e : group.Entries()) {
            Entry(e);
        }
    }

    // A renamed object's name. Where the shell shows a "LocalizedString" that
    // is where the name goes; the machine's own name given again puts its own
    // value back.
    void Name(const std::string& classKey, const std::string& name, bool changed) const {
        if (!ownDefaults) {
            SetRegString(registry, classKey, "", name);
            return;
        }
        if (!changed) {
            return;
        }
        const std::string valueName = ShownNameValue(registry, classKey);
        const auto before = BaselineValueOf(registry, classKey, valueName);
        if (before && ResolveShownName(app, RegValueText(*before)) == name &&
            RestoreRecordedValue(registry, classKey, valueName)) {
            return;
        }
        SetRegString(registry, classKey, valueName, name);
    }
};

// Group 1. The bin's unnamed value follows the empty or the full icon as the
// bin was before this write: empty when its unnamed value and its "empty"
// value were the same, compared without regard to case.
void WriteDesktopIcons(const EntryWriter& write, const IconGroup& group) {
    const SystemIconEntry* empty = nullptr;
    const SystemIconEntry* full = nullptr;
    for (const SystemIconEntry& e : group.Entries()) {
        if (e.Key() == kRecycleEmptyName) {
            empty = &e;
        } else if (e.Key() == kRecycleFullName) {
            full = &e;
        } else {
            write.Entry(e);
        }
    }
    if (empty == nullptr || full == nullptr) {
        return;
    }
    const std::string& binIcons = empty->store.path;
    RegistryStore& registry = write.registry;
    const bool binIsEmpty =
        EqualsNoCase(GetRegString(registry, binIcons, ""), GetRegString(registry, binIcons, "empty"));
    const SystemIconEntry& shown = binIsEmpty ? *empty : *full;
    write.Text({binIcons, {}}, shown, shown.Current().Text(), false);
    write.Entry(*empty);
    write.Entry(*full);
}

void WriteNames(const EntryWriter& write, const IconGroup& group, std::string_view recycleBinKey) {
    for (const SystemIconEntry& e : group.Entries()) {
        if (IsRecycleBin(e) || e.classKey.empty() || !IsRenamable(e)) {
            continue;
        }
        write.Name(e.classKey, e.displayName, e.NameChanged());
    }
    if (group.Number() == kDesktopGroup && !recycleBinKey.empty()) {
        const SystemIconEntry* bin = group.Find(kRecycleEmptyName);
        write.Name(std::string(recycleBinKey), RecycleBinName(group), bin != nullptr && bin->NameChanged());
    }
}

void WriteFileIcons(const EntryWriter& write, const IconGroup& group, std::optional<bool> bitmapThumbnail,
                    bool readThumbnail) {
    write.Group(group);
    if (group.Find(kBitmapName) == nullptr) {
        return;
    }
    // The bitmap rule belongs to its tweak: on a machine with defaults of its
    // own it is written only when the tweak was changed.
    if (write.ownDefaults && !bitmapThumbnail) {
        return;
    }
    RegistryStore& registry = write.registry;
    if (bitmapThumbnail.value_or(readThumbnail)) {
        SetRegString(registry, kBmpClassPath, "", "Paint.Picture");
        SetRegString(registry, kBmpShellNewPath, "Command", "");
        SetRegString(registry, kPaintPictureIconPath, "", "%1");
    } else {
        SetRegString(registry, kPaintPictureIconPath, "", kPaintIconLocation);
    }
}

// Pointers: each file alone, in the shell's order, then the fifteen
// SPI_SETCURSORS calls that make the shell load them again.
void WriteCursors(const EntryWriter& write, System& system, const IconGroup& group) {
    for (std::string_view value : kCursorWriteOrder) {
        for (const SystemIconEntry& e : group.Entries()) {
            if (EqualsNoCase(e.store.valueName, value)) {
                write.Text(e.store, e, e.currentFile);
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
    const bool readThumbnail = GetRegString(registry, kPaintPictureIconPath, "") == "%1";
    const EntryWriter write{registry, catalogue.App(), KeepsOwnDefaults(catalogue.App().kind)};
    const auto marked = [&](GroupNumber n) {
        return state.groupChanged.at(static_cast<std::size_t>(static_cast<int>(n) - 1));
    };
    const std::string recycleBinKey =
        catalogue.Detected() ? catalogue.State().ClassKey(DesktopObject::RecycleBin) : std::string();

    if (marked(GroupNumber::DesktopIcons)) {
        WriteDesktopIcons(write, catalogue.Group(GroupNumber::DesktopIcons));
    }
    if (names.desktopNamesChanged) {
        WriteNames(write, catalogue.Group(GroupNumber::DesktopIcons), recycleBinKey);
    }
    if (marked(GroupNumber::StartIcons)) {
        write.Group(catalogue.Group(GroupNumber::StartIcons));
    }
    if (marked(GroupNumber::FolderIcons)) {
        write.Group(catalogue.Group(GroupNumber::FolderIcons));
    }
    if (names.folderNamesChanged) {
        WriteNames(write, catalogue.Group(GroupNumber::FolderIcons), {});
    }
    for (GroupNumber n : {GroupNumber::DriveIcons, GroupNumber::OtherIcons}) {
        if (marked(n)) {
            write.Group(catalogue.Group(n));
        }
    }
    if (marked(GroupNumber::FileIcons)) {
        WriteFileIcons(write, catalogue.Group(GroupNumber::FileIcons), bitmapThumbnail, readThumbnail);
    }
    if (marked(GroupNumber::Cursors)) {
        WriteCursors(write, system, catalogue.Group(GroupNumber::Cursors));
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
    // What was written is what the machine holds now.
    for (int number = 1; number <= kIconGroupCount; ++number) {
        IconGroup& group = catalogue.Group(number);
        for (std::size_t i = 0; i < group.Count(); ++i) {
            SystemIconEntry& e = group.At(i);
            e.loaded = e.Current();
            e.loadedName = e.displayName;
        }
    }
    state.groupChanged.fill(false);
    names = {};
    state.themeLoaded = false;
    state.applyEnabled = false;
}

}  // namespace glyphmoor
