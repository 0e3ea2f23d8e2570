#include "icons/IconCacheRebuild.h"

#include "foundation/modRegistry.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace glyphmoor {

namespace {

constexpr std::string_view kIeKeyPath = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Internet Explorer";

bool InternetExplorer5(RegistryStore& registry) {
    return GetRegString(registry, kIeKeyPath, "Version").starts_with('5');
}

void BroadcastIconMetrics(System& system) {
    system.BroadcastSettingChange(kSpiSetIconMetrics, std::nullopt);
}

}  // namespace

int ShellIconSizeOf(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::int16_t size = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size()) {
        return kDefaultShellIconSize;
    }
    return size;
}

RebuildOutcome RebuildIconCache(MsgContext& c, const RebuildHooks& hooks) {
    if (c.app.windowsFlavour == "WinNT") {
        const bool newShell = hooks.desktopUpdateShell && hooks.desktopUpdateShell();
        if (InternetExplorer5(c.registry)) {
            MsgNt4ActiveDesktopNote(c);
        } else if (newShell) {
            MsgNt4Ie4Limited(c);
            return RebuildOutcome::RefusedOnNt4Ie4;
        }
    }

    const int size = ShellIconSizeOf(GetRegString(c.registry, kWindowMetricsPath, kShellIconSizeName));
    SetRegString(c.registry, kWindowMetricsPath, kShellIconSizeName, std::to_string(size + 1));
    BroadcastIconMetrics(c.system);
    SetRegString(c.registry, kWindowMetricsPath, kShellIconSizeName, std::to_string(size));
    BroadcastIconMetrics(c.system);

    if (hooks.refreshIconLists) {
        hooks.refreshIconLists();
    }
    ShowRebuildNotice(c);
    return RebuildOutcome::Rebuilt;
}

void ShowRebuildNotice(MsgContext& c) {
    MsgShellNotified(c);
}

void PromptRestart(MsgContext& c) {
    MsgRestartNow(c);
}

void EnableShutdownPrivilege(MsgContext& c) {
    c.system.EnableShutdownPrivilege();
}

void ShowNextStartNotice(MsgContext& c) {
    if (c.state.restartPending) {
        MsgEffectNextStart(c);
    }
}

}  // namespace glyphmoor
