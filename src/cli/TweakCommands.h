// The "tweaks" commands: the Tweak Shell tree listed, set and restored from
// the command line, applied as the window's Apply applies.
#pragma once

#include "cli/Cli.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// tweaks: the whole tree in tree order, a node a line: kind, parent key, key,
// text, state (on, off, or a value item's pending value; empty for a group).
int Tweaks(CliContext& c, CommandArgs a);
// tweaks set KEY=VALUE... [--yes]: on or off for a check item, a number
// within its limits for a value item; then applies. Prints whether a restart
// is needed.
int TweaksSet(CliContext& c, CommandArgs a);
// tweaks restore-defaults --yes: the defaults, then Apply.
int TweaksRestoreDefaults(CliContext& c, CommandArgs a);

// The known keys nearest to an unknown one (by edit distance without case,
// keys that contain it first), at most `count`.
std::vector<std::string> NearestKeys(std::string_view key, const std::vector<std::string>& known,
                                     std::size_t count = 3);

}  // namespace glyphmoor
