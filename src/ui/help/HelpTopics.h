// HelpTopics: which page of the shipped help answers what. A topic is found
// by a key: "Contents", a page of the window by its caption ("Icons &
// Cursors"), a dialog by its form's name ("frmChangeIcon"), or the help
// keyword of a message ("Icon Cache").
#pragma once

#include "foundation/Startup.h"

#include <optional>
#include <span>
#include <string_view>

namespace glyphmoor {

struct HelpTopic {
    std::string_view key;
    std::string_view file;  // in the help folder (InstallPaths.h)
};

std::span<const HelpTopic> HelpTopics();

// The file of the topic with that key, exactly as written; nothing for a
// key without a topic.
std::optional<std::string_view> HelpTopicFile(std::string_view key);

// The key of a page's topic: its caption on the page bar.
std::string_view PageTopicKey(Page page);

// The forms with a topic of their own, by name.
std::span<const std::string_view> HelpDialogs();

}  // namespace glyphmoor
