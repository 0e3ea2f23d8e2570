#include "ui/help/HelpTopics.h"

#include <array>

namespace glyphmoor {

namespace {

constexpr std::array<HelpTopic, 16> kTopics = {{
    {"Contents", "index.html"},
    {"Main", "window.html"},
    {"Machines", "machines.html"},
    {"Themes", "themes.html"},
    {"Icons & Cursors", "icons-and-cursors.html"},
    {"Folders", "folders.html"},
    {"Tweak Shell", "tweak-shell.html"},
    {"frmChangeIcon", "change-icon.html"},
    {"frmRename", "rename.html"},
    {"frmPrompt", "messages.html"},
    {"frmAbout", "about.html"},
    {"frmUndoAll", "undo-all.html"},
    // The keywords of the messages with a "&Help" button.
    {"Icon Cache", "icon-cache.html"},
    {"Hide, Network Neighborhood", "hide-network-neighborhood.html"},
    {"Introduction, Explorer", "explorer.html"},
    {"What's This", "window.html#whatsthis"},
}};

constexpr std::array<std::string_view, 5> kDialogs = {"frmChangeIcon", "frmRename", "frmPrompt", "frmAbout",
                                                      "frmUndoAll"};

}  // namespace

std::span<const HelpTopic> HelpTopics() {
    return kTopics;
}

std::optional<std::string_view> HelpTopicFile(std::string_view key) {
    for (const HelpTopic& topic : kTopics) {
        if (topic.key == key) {
            return topic.file;
        }
    }
    return std::nullopt;
}

std::string_view PageTopicKey(Page page) {
    switch (page) {
        case Page::Themes:
            return "Themes";
        case Page::IconsAndCursors:
            return "Icons & Cursors";
        case Page::Folders:
            return "Folders";
        case Page::TweakShell:
            return "Tweak Shell";
        case Page::None:
            break;
    }
    return "Main";
}

std::span<const std::string_view> HelpDialogs() {
    return kDialogs;
}

}  // namespace glyphmoor
