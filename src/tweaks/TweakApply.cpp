#include "tweaks/TweakApply.h"

#include "foundation/Baseline.h"
#include "foundation/modRegistry.h"
#include "icons/IconCatalogue.h"
#include "tweaks/TweakEditing.h"

#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace glyphmoor {

namespace {

// The groups Apply writes, in its order.
// "Options" (the startup page's) is written with them: its items are
// registry items like theirs.
constexpr std::array<std::string_view, 9> kApplyOrder = {
    "General", "Display", "Explorer", "Icons", "Mouse", "Start Menu", "Wallpaper", "Restrictions", "Options"};

// SPIF_UPDATEINIFILE | SPIF_SENDWININICHANGE.
constexpr std::uint32_t kSpifUpdateAndSend = 3;

struct Writer {
    TweakTree& tree;
    RegistryStore& registry;
    System& system;
    const TweakApplyHooks& hooks;

    [[nodiscard]] std::string Expand(std::string_view text) const {
        return ExpandTweakText(text, tree.App());
    }

    void Store(const TweakRow& row, const std::string& text) const {
        switch (row.store) {
            case TweakStore::Dword:
                SetRegDword(registry, row.path, row.name, LeadingNumber(text));
                break;
            case TweakStore::Binary:
                SetRegBinary(registry, row.path, row.name, text);
                break;
            default:
                SetRegString(registry, row.path, row.name, text);
                break;
        }
    }

    void DeleteKeyPath(std::string_view path) const {
        const std::size_t cut = path.rfind('\\');
        DeleteRegKey(registry, path.substr(0, cut), path.substr(cut + 1));
    }

    // Deletes a verb's key, its Command subkey first: Windows NT deletes no
    // key that still has subkeys.
    void DeleteVerb(const TweakRow& row) const {
        if (row.path != row.verbKey) {
            DeleteKeyPath(row.path);
        }
        DeleteKeyPath(row.verbKey);
    }

    void Taskbar(bool on) const {
        const std::string program = tree.App().machine.ProgramDirectory() + std::string(kTaskbarProgram);
        const std::string_view parameters = on ? " /h" : " /u";
        system.ShellExecuteVerb("Open", program, parameters, kSwShowNormal);
        if (on) {
            SetRegString(registry, kRunPath, "Hide Taskbar", "\"" + program + "\"" + std::string(parameters));
        } else {
            DeleteRegValue(registry, kRunPath, "Hide Taskbar");
        }
    }

    // Failures (the folder exists, is not empty, is missing) are ignored.
    void Folder(const TweakNode& node, bool on) const {
        const auto folder = tree.CascadeFolder(node.key);
        if (!folder) {
            return;
        }
        const std::filesystem::path host = tree.App().machine.HostPath(*folder);
        std::error_code ec;
        if (on) {
            if (std::filesystem::exists(host, ec)) {
                return;
            }
            if (hooks.makeFolder) {
                hooks.makeFolder(*folder);
            } else {
                std::filesystem::create_directory(host, ec);
            }
        } else if (hooks.removeFolder) {
            if (std::filesystem::is_directory(host, ec)) {
                hooks.removeFolder(*folder);
            }
        } else {
            std::filesystem::remove(host, ec);
        }
    }

    // Writes a check item; gives the text written, for the system call.
    std::string Check(const TweakNode& node) const {
        const TweakRow& row = *node.row;
        const bool on = node.IsOn();
        std::string written = Expand(on ? row.onValue : row.offValue);
        switch (row.write) {
            case WriteRule::Values:
                Store(row, written);
                break;
            case WriteRule::DeleteWhenOff:
                on ? Store(row, written) : static_cast<void>(DeleteRegValue(registry, row.path, row.name));
                break;
            case WriteRule::VerbKey:
                if (on) {
                    SetRegString(registry, row.path, row.name, written);
                    if (!row.verbCaption.empty()) {
                        SetRegString(registry, row.verbKey, "", row.verbCaption);
                    }
                } else {
                    DeleteVerb(row);
                }
                break;
            case WriteRule::Taskbar:
                Taskbar(on);
                break;
            case WriteRule::Folder:
                Folder(node, on);
                break;
            case WriteRule::DelayUntilClicked: {
                const TweakNode* delay = tree.Find(kMenuShowDelayKey);
                written = on ? written : (delay != nullptr ? delay->pending : std::string());
                Store(row, written);
                break;
            }
            case WriteRule::IconApply:
                break;
        }
        return written;
    }

    void Call(const TweakRow& row, bool on, const std::string& written) const {
        switch (row.spi) {
            case SpiRule::OnOff:
                system.SystemParametersInfo(row.spiAction, on ? 1 : 0, SpiParam{}, 0);
                break;
            case SpiRule::WrittenNumber:
            case SpiRule::Number:
                system.SystemParametersInfo(row.spiAction, static_cast<std::uint32_t>(LeadingNumber(written)),
                                            SpiParam{}, 0);
                break;
            case SpiRule::Animation:
                system.SystemParametersInfo(row.spiAction, sizeof(AnimationInfo),
                                            AnimationInfo{8, on ? 1 : 0}, kSpifUpdateAndSend);
                break;
            case SpiRule::Wallpaper:
                system.SystemParametersInfo(row.spiAction, 0,
                                            GetRegString(registry, kTweakDeskPath, "Wallpaper"),
                                            kSpifUpdateAndSend);
                break;
            case SpiRule::None:
                break;
        }
    }

    // Restoring a machine's own default: the value it held, byte for byte.
    [[nodiscard]] bool PutBack(const TweakNode& node) const {
        const TweakRow& row = *node.row;
        const bool plainValue = row.kind == TweakKind::Value || row.write == WriteRule::Values ||
                                row.write == WriteRule::DeleteWhenOff ||
                                row.write == WriteRule::DelayUntilClicked;
        if (!node.toBaseline || !plainValue || !RestoreRecordedValue(registry, row.path, row.name)) {
            return false;
        }
        const std::string written =
            row.kind == TweakKind::Value ? node.pending : Expand(node.IsOn() ? row.onValue : row.offValue);
        Call(row, node.IsOn(), written);
        return true;
    }

    void Item(TweakNode& node) const {
        const TweakRow& row = *node.row;
        if (PutBack(node)) {
            // written as the machine had it
        } else if (row.kind == TweakKind::Value) {
            if (!node.pending.empty()) {
                SetRegString(registry, row.path, row.name, node.pending);
                Call(row, false, node.pending);
            }
        } else {
            const std::string written = Check(node);
            Call(row, node.IsOn(), written);
            if (row.path.ends_with("Shell Icons") && hooks.overlayChanged) {
                hooks.overlayChanged();
            }
        }
        node.machineImage = node.image;
        node.machinePending = node.pending;
        node.toBaseline = false;
    }
};

std::string StoreKey(const TweakRow& row) {
    return std::string(row.path) + '\n' + std::string(row.name);
}

void WriteGroup(const Writer& write, std::string_view group, bool ownDefaults) {
    std::set<std::string> written;
    for (TweakNode& node : write.tree.Nodes()) {
        if (node.row == nullptr || node.kind == TweakKind::Group || node.row->write == WriteRule::IconApply ||
            write.tree.TopGroupOf(node.key) != group) {
            continue;
        }
        const std::string store = StoreKey(*node.row);
        // A later item that writes the same value keeps the last word, as
        // when the whole group is written.
        if (ownDefaults && !node.Changed() && !node.toBaseline && written.count(store) == 0) {
            continue;
        }
        write.Item(node);
        if (!node.row->path.empty()) {
            written.insert(store);
        }
    }
}

}  // namespace

void ApplyTweaks(TweakTree& tree, RegistryStore& registry, System& system, const TweakApplyHooks& hooks) {
    const Writer write{tree, registry, system, hooks};
    const bool ownDefaults = KeepsOwnDefaults(tree.App().kind);
    for (std::string_view group : kApplyOrder) {
        if (!tree.GroupChanged(group) || (group == "Display" && !tree.DisplayTweaksAvailable())) {
            continue;
        }
        WriteGroup(write, group, ownDefaults);
        tree.SetGroupChanged(group, false);
    }
}

std::optional<bool> BitmapThumbnailForIcons(const TweakTree& tree) {
    const TweakNode* node = tree.Find(kBitmapThumbnailKey);
    if (!tree.Loaded() || node == nullptr) {
        return std::nullopt;
    }
    if (KeepsOwnDefaults(tree.App().kind) && !node->Changed()) {
        return std::nullopt;
    }
    return node->IsOn();
}

void BitmapThumbnailWritten(TweakTree& tree) {
    if (TweakNode* node = tree.Find(kBitmapThumbnailKey)) {
        node->machineImage = node->image;
    }
}

void ApplyIconsAndTweaks(IconCatalogue& catalogue, TweakTree& tree, Machine& machine, AppState& state,
                         IconNameMarks& names) {
    const std::optional<bool> bitmap = BitmapThumbnailForIcons(tree);
    const TweakNode* bitmapNode = tree.Find(kBitmapThumbnailKey);
    if (bitmap && bitmapNode != nullptr && bitmapNode->Changed()) {
        // The bitmap rule is written with the file types.
        if (!catalogue.Built()) {
            catalogue.DetectShellIcons();
        }
        state.groupChanged.at(static_cast<std::size_t>(GroupNumber::FileIcons) - 1) = true;
    }
    ApplyIconChanges(catalogue, machine.Registry(), machine.Sys(), state, names, bitmap);
    if (bitmap) {
        BitmapThumbnailWritten(tree);
    }
    if (!tree.Loaded()) {
        return;
    }
    TweakApplyHooks hooks;
    hooks.overlayChanged = [&] {
        if (catalogue.Built()) {
            catalogue.BuildOtherIcons(!ShortcutOverlayHidden(machine.Registry(), catalogue.App()));
        }
    };
    hooks.makeFolder = [&](const std::string& windowsPath) {
        static_cast<void>(machine.MakeFolder(windowsPath));
    };
    hooks.removeFolder = [&](const std::string& windowsPath) {
        static_cast<void>(machine.RemoveFolder(windowsPath));
    };
    ApplyTweaks(tree, machine.Registry(), machine.Sys(), hooks);
}

}  // namespace glyphmoor
