#include "tweaks/BootOptions.h"

#include "foundation/FileIo.h"
#include "foundation/HostFiles.h"
#include "foundation/ProfileFile.h"
#include "foundation/modProfile.h"

#include <array>
#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

// The most of Msdos.sys that is read: the file is a few hundred bytes.
constexpr std::uint64_t kMostMsdosSysBytes = 1U << 20U;

constexpr std::array<std::string_view, 4> kBootGroups = {"Boot", "Dual Boot", "Startup Menu", "Safe Mode"};

constexpr TweakRow Group(std::string_view key) {
    return TweakRow{.kind = TweakKind::Group,
                    .key = key,
                    .store = TweakStore::Profile,
                    .restore = TweakDefault::NotReset};
}

// A switch that reads on unless it is "0" (or, with `onlyOne`, only when it is "1").
constexpr TweakRow Switch(std::string_view group, std::string_view key, std::string_view name, bool onlyOne,
                          std::string_view help) {
    return TweakRow{.parent = group,
                    .key = key,
                    .store = TweakStore::Profile,
                    .name = name,
                    .read = onlyOne ? ReadRule::Equals : ReadRule::NotEquals,
                    .readValue = onlyOne ? "1" : "0",
                    .onValue = "1",
                    .offValue = "0",
                    .restore = TweakDefault::NotReset,
                    .help = help};
}

constexpr TweakRow Delay(std::string_view group, std::string_view key, std::string_view text,
                         std::string_view name, std::string_view byDefault, std::string_view help) {
    return TweakRow{.kind = TweakKind::Value,
                    .parent = group,
                    .key = key,
                    .text = text,
                    .store = TweakStore::Profile,
                    .name = name,
                    .restore = TweakDefault::NotReset,
                    .buildDefault = byDefault,
                    .unit = "seconds",
                    .limit = 30,
                    .help = help};
}

constexpr auto kRows = std::to_array<TweakRow>({
    Group("Boot"),
    Switch("Boot", "Enable F5-F8 Function Keys", "BootKeys", false,
           "Lets you press F5 to F8 while Windows starts, for the Startup menu and Safe Mode."),
    Delay("Boot", "Startup Delay", {}, "BootDelay", "2",
          "How long Windows waits for F5 to F8 before it starts, in seconds."),
    Switch("Boot", "Display Windows Splash Screen", "Logo", false,
           "Shows the Windows picture while Windows starts."),
    Switch("Boot", "Run Scandisk automatically after system crash", "AutoScan", false,
           "Checks the disks when Windows starts after it was not shut down properly."),
    Group("Dual Boot"),
    Switch("Dual Boot", "Enable boot into old MS-DOS version", "BootMulti", false,
           "Lets you start the earlier version of MS-DOS kept on the disk from the Startup menu."),
    Switch("Dual Boot", "Enable Windows as Default Operating System", "BootWin", false,
           "Starts Windows, not the earlier MS-DOS, unless you choose otherwise."),
    Switch("Dual Boot", "Boot into Windows Graphical User Interface", "BootGUI", false,
           "Starts the Windows desktop; off leaves you at the MS-DOS prompt."),
    Group("Startup Menu"),
    Switch("Startup Menu", "Always boot into Startup Menu", "BootMenu", true,
           "Shows the Startup menu every time Windows starts."),
    Delay("Startup Menu", "Startup Menu Delay", "Menu Delay", "BootMenuDelay", "4",
          "How long the Startup menu waits before it starts its default choice, in seconds."),
    Group("Safe Mode"),
    Switch("Safe Mode", "Enabled Safe Mode Warning after system crash", "BootWarn", false,
           "Warns that Windows starts in Safe Mode after it was not shut down properly."),
    Switch("Safe Mode", "Always boot into Safe Mode", "BootFailSafe", true,
           "Starts Windows in Safe Mode every time."),
    Switch("Safe Mode", "Enable Network Support", "Network", false,
           "Offers Safe Mode with network support on the Startup menu."),
});

std::string Read(const std::filesystem::path& file, std::string_view key) {
    return ReadProfileValue(file, kBootSection, key);
}

}  // namespace

std::span<const TweakRow> BootRows() {
    return kRows;
}

std::string BootNumber(std::string_view value, std::string_view fallback) {
    if (value.empty() || value.size() > 9) {
        return std::string(fallback);
    }
    int number = 0;
    for (const char c : value) {
        if (c < '0' || c > '9') {
            return std::string(fallback);
        }
        number = number * 10 + (c - '0');
    }
    return std::to_string(number);
}

void BuildBootGroups(TweakTree& tree) {
    if (tree.BootOptionsLoaded() || tree.App().windowsFlavour == "WinNT") {
        return;
    }
    const std::filesystem::path file = tree.App().machine.HostPath(kMsdosSysPath);
    for (const TweakRow& row : BootRows()) {
        TweakNode node{.row = &row,
                       .kind = row.kind,
                       .parent = std::string(row.parent),
                       .key = std::string(row.key),
                       .text = std::string(row.Text())};
        if (row.kind == TweakKind::Group) {
            node.image = kTweakImageGroup;
        } else if (row.kind == TweakKind::Value) {
            node.image = kTweakImageValue;
            node.pending = BootNumber(Read(file, row.name), row.buildDefault);
        } else {
            const std::string value = Read(file, row.name);
            const bool on = row.read == ReadRule::Equals ? value == row.readValue : value != row.readValue;
            node.image = on ? kTweakImageOn : kTweakImageOff;
        }
        node.machineImage = node.image;
        node.machinePending = node.pending;
        tree.AddNode(std::move(node));
    }
    tree.SetBootMenuDefault(BootNumber(Read(file, kBootMenuDefaultKey), kBootMenuDefaultFallback));
    tree.SetBootOptionsLoaded();
}

Status WriteBootOptions(TweakTree& tree, Machine& machine) {
    bool any = false;
    for (std::string_view group : kBootGroups) {
        any = any || tree.GroupChanged(group);
    }
    if (!tree.BootOptionsLoaded() || !any) {
        return {};
    }
    // The new file goes to the machine's next save, in the same change as the
    // registry; a file it makes is recorded for Undo all.
    const std::filesystem::path file = machine.Env().HostPath(kMsdosSysPath);
    std::error_code ec;
    std::string bytes;
    if (std::filesystem::exists(std::filesystem::symlink_status(file, ec))) {
        bytes = TRY(ReadWholeFile(file, kMostMsdosSysBytes));
    }
    ProfileFile text = ProfileFile::Parse(bytes);
    for (std::string_view group : kBootGroups) {
        if (!tree.GroupChanged(group)) {
            continue;
        }
        for (TweakNode& node : tree.Nodes()) {
            if (node.row == nullptr || node.row->store != TweakStore::Profile ||
                node.kind == TweakKind::Group || node.parent != group) {
                continue;
            }
            const std::string value = node.kind == TweakKind::Value
                                          ? BootNumber(node.pending, node.row->buildDefault)
                                          : std::string(node.IsOn() ? "1" : "0");
            text.SetValue(kBootSection, node.row->name, value);
            if (node.row->name == "BootMenu") {
                text.SetValue(kBootSection, kBootMenuDefaultKey, tree.BootMenuDefault());
            }
            node.machineImage = node.image;
            node.machinePending = node.pending;
        }
        tree.SetGroupChanged(group, false);
    }
    return machine.WriteDriveFile(std::string(kMsdosSysPath), text.Bytes(), kBootAttributesAfter);
}

}  // namespace glyphmoor
