#include "cli/TweakCommands.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/TextEncoding.h"
#include "icons/IconCacheRebuild.h"
#include "icons/IconCatalogue.h"
#include "icons/IconEditing.h"
#include "prompts/SilentPrompt.h"
#include "prompts/modMsgbox.h"
#include "tweaks/TweakApply.h"
#include "tweaks/TweakEditing.h"
#include "tweaks/TweakTree.h"

#include <algorithm>
#include <charconv>
#include <numeric>

namespace glyphmoor {

namespace {

// The prompt of a command given --yes: it presses "OK" where a message has
// one, otherwise the safe answer.
class YesPrompt final : public Prompt {
public:
    using Prompt::Prompt;

protected:
    void Show(const PromptRequest& request) override {
        LoadDialog();
        for (int index = 0; index <= 2; ++index) {
            if (request.buttons.at(static_cast<std::size_t>(index)) == "OK") {
                PressButton(index, false);
                return;
            }
        }
        if (auto index = SafeAnswer(request)) {
            PressButton(*index, false);
        }
    }
};

// One command's machine, tree, catalogue and state.
struct TweakSession {
    Machine& machine;
    AppEnvironment app;
    IconCatalogue catalogue;
    TweakTree tree;
    AppState state;
    IconNameMarks names;

    explicit TweakSession(Machine& m)
        : machine(m), app(InitEnvironment(m.Env())), catalogue(m.Registry(), app), tree(m.Registry(), app) {
        const ScreenSize screen = m.Sys().Screen();
        tree.Build(DisplayCaps{m.Sys().ColourDepth(), screen.width, screen.height});
        state.tweaksLoaded = true;
    }

    MsgContext Messages(Prompt& prompt) {
        return MsgContext{prompt, machine.Registry(), machine.Sys(), app, state};
    }

    // Apply as the window applies it: icons, tweaks, then the icon-cache
    // rebuild answered silently; one save.
    bool ApplyAndSave(CliContext& c) {
        ApplyIconsAndTweaks(catalogue, tree, machine, state, names);
        if (state.rebuildPending) {
            SilentPrompt prompt(machine.Sys(), app.helpFile);
            MsgContext messages = Messages(prompt);
            RebuildHooks hooks;
            hooks.desktopUpdateShell = [this] {
                if (!catalogue.Detected()) {
                    catalogue.DetectShellIcons(true);
                }
                return catalogue.State().newShell;
            };
            RebuildIconCache(messages, hooks);
        }
        return c.SaveMachine();
    }
};

std::string StateText(const TweakNode& node) {
    if (node.kind == TweakKind::Group) {
        return {};
    }
    if (node.kind == TweakKind::Value) {
        return node.pending;
    }
    return node.IsOn() ? "on" : "off";
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            const bool same = FoldCase(static_cast<unsigned char>(a[i - 1])) ==
                              FoldCase(static_cast<unsigned char>(b[j - 1]));
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (same ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

bool ContainsNoCase(std::string_view text, std::string_view part) {
    if (part.empty() || part.size() > text.size()) {
        return false;
    }
    for (std::size_t i = 0; i + part.size() <= text.size(); ++i) {
        if (EqualsNoCase(text.substr(i, part.size()), part)) {
            return true;
        }
    }
    return false;
}

// The node a KEY names: exactly, else without regard to case.
TweakNode* FindKey(TweakTree& tree, std::string_view key) {
    if (TweakNode* node = tree.Find(key)) {
        return node;
    }
    for (TweakNode& node : tree.Nodes()) {
        if (EqualsNoCase(node.key, key)) {
            return &node;
        }
    }
    return nullptr;
}

std::optional<int> ParseNumber(std::string_view text) {
    int number = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (ec != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

struct Assignment {
    std::string key;
    std::string value;
};

// Says why an assignment cannot be made; nothing when it can.
std::optional<std::string> CheckAssignment(TweakSession& s, const Assignment& a) {
    TweakNode* node = FindKey(s.tree, a.key);
    if (node == nullptr) {
        std::vector<std::string> known;
        for (const TweakNode& n : s.tree.Nodes()) {
            if (n.kind != TweakKind::Group) {
                known.push_back(n.key);
            }
        }
        std::string text = "no tweak '" + a.key + "'";
        const std::vector<std::string> nearest = NearestKeys(a.key, known);
        for (std::size_t i = 0; i < nearest.size(); ++i) {
            text += (i == 0 ? "; the nearest: '" : "', '") + nearest[i];
        }
        return nearest.empty() ? text : text + "'";
    }
    if (node->kind == TweakKind::Group) {
        return "'" + node->key + "' is a group, not a setting";
    }
    if (node->kind == TweakKind::Value) {
        const int limit = ValueLimitOf(*node->row, s.tree.Caps());
        const auto number = ParseNumber(a.value);
        if (!number || *number < 0 || *number > limit) {
            return "'" + node->key + "' takes a number from 0 to " + std::to_string(limit);
        }
        return std::nullopt;
    }
    if (a.value != "on" && a.value != "off") {
        return "'" + node->key + "' takes on or off";
    }
    return std::nullopt;
}

// Makes one assignment as the page would; false when its question was
// refused (the question's text then is the prompt's).
bool Assign(TweakSession& s, MsgContext& messages, const Assignment& a) {
    TweakNode* node = FindKey(s.tree, a.key);
    const std::string key = node->key;
    if (node->kind == TweakKind::Value) {
        ScrollTweakValue(s.tree, s.state, key, *ParseNumber(a.value));
        return true;
    }
    if (node->IsOn() == (a.value == "on")) {
        return true;
    }
    return ToggleTweak(s.tree, messages, key) != ToggleOutcome::Refused;
}

}  // namespace

std::vector<std::string> NearestKeys(std::string_view key, const std::vector<std::string>& known,
                                     std::size_t count) {
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const std::string& k : known) {
        const std::size_t distance = ContainsNoCase(k, key) ? 0 : 1 + EditDistance(key, k);
        ranked.emplace_back(distance, k);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& x, const auto& y) { return x.first < y.first; });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < ranked.size() && i < count; ++i) {
        nearest.push_back(ranked[i].second);
    }
    return nearest;
}

int Tweaks(CliContext& c, CommandArgs a) {
    if (!a.empty()) {
        return UsageError(c, "tweaks");
    }
    TweakSession s(c.TheMachine());
    for (const TweakNode& node : s.tree.Nodes()) {
        const char* kind = node.kind == TweakKind::Group   ? "group"
                           : node.kind == TweakKind::Value ? "value"
                                                           : "check";
        c.out << kind << '\t' << node.parent << '\t' << node.key << '\t' << node.text << '\t'
              << StateText(node) << '\n';
    }
    return kExitOk;
}

int TweaksSet(CliContext& c, CommandArgs a) {
    bool yes = false;
    std::vector<Assignment> assignments;
    for (const std::string& arg : a) {
        const std::size_t equals = arg.rfind('=');
        if (arg == "--yes") {
            yes = true;
        } else if (equals == std::string::npos || equals == 0) {
            return UsageError(c, "tweaks set");
        } else {
            assignments.push_back({arg.substr(0, equals), arg.substr(equals + 1)});
        }
    }
    if (assignments.empty()) {
        return UsageError(c, "tweaks set");
    }
    TweakSession s(c.TheMachine());
    for (const Assignment& assignment : assignments) {
        if (auto why = CheckAssignment(s, assignment)) {
            c.err << "glyphmoor-cli: " << *why << "; nothing was changed\n";
            return kExitFailed;
        }
    }
    SilentPrompt silent(s.machine.Sys(), s.app.helpFile);
    YesPrompt agreeing(s.machine.Sys(), s.app.helpFile);
    Prompt& prompt = yes ? static_cast<Prompt&>(agreeing) : silent;
    MsgContext messages = s.Messages(prompt);
    for (const Assignment& assignment : assignments) {
        if (!Assign(s, messages, assignment)) {
            c.err << prompt.PromptText()
                  << "\n\nglyphmoor-cli: give --yes to continue; nothing was changed\n";
            return kExitFailed;
        }
    }
    const bool restart = s.state.restartNeeded;
    if (!s.ApplyAndSave(c)) {
        return kExitFailed;
    }
    c.out << (restart ? "restart needed" : "no restart needed") << '\n';
    return kExitOk;
}

int TweaksRestoreDefaults(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 1 && a[0] == "--yes";
    if (!a.empty() && !yes) {
        return UsageError(c, "tweaks restore-defaults");
    }
    TweakSession s(c.TheMachine());
    if (!yes) {
        SilentPrompt prompt(s.machine.Sys(), s.app.helpFile);
        MsgContext messages = s.Messages(prompt);
        static_cast<void>(MsgConfirmRestoreSettings(messages));
        c.err << prompt.Answered().back() << "\n\nglyphmoor-cli: give --yes to continue\n";
        return kExitFailed;
    }
    RestoreTweakDefaults(s.tree, s.state);
    return s.ApplyAndSave(c) ? kExitOk : kExitFailed;
}

}  // namespace glyphmoor
