// The Miscellaneous tab's part of the tree: the Options group read and
// written where Windows keeps such verbs, restore-defaults, and the startup
// programs deleted (after the question) and added.
#include "foundation/modRegistry.h"
#include "tweaks/StartupPage.h"
#include "tweaks/TweakBench.h"
#include "tweaks/TweakEditing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace glyphmoor {
namespace {

using test::TweakBench;

constexpr std::string_view kMyComputer =
    "HKEY_CLASSES_ROOT\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}\\shell\\Glyphmoor";
constexpr std::string_view kFolderVerb = "HKEY_CLASSES_ROOT\\Folder\\shell\\ChangeIcon";
constexpr std::string_view kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";
constexpr std::string_view kUserRun = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";

TEST(StartupPage, OptionsWriteTheVerbsAndThePositionsSetting) {
    TweakBench bench;
    bench.Built();
    BuildOptionGroup(bench.tree);
    EXPECT_EQ(bench.Image(kOptionContextMenu), kTweakImageOff);
    EXPECT_EQ(bench.Image(kOptionChangeIcon), kTweakImageOff);
    EXPECT_EQ(bench.Image(kOptionRestorePosition), kTweakImageOff);
    bench.Toggle(kOptionContextMenu);
    bench.Toggle(kOptionChangeIcon);
    bench.Toggle(kOptionRestorePosition);
    bench.Apply();
    const std::string program = "\"C:\\Program Files\\Glyphmoor\\Glyphmoor.exe\"";
    EXPECT_EQ(bench.Get(kMyComputer, ""), "&Glyphmoor");
    EXPECT_EQ(bench.Get(std::string(kMyComputer) + "\\command", ""), program);
    EXPECT_EQ(bench.Get(kFolderVerb, ""), "C&hange Icon...");
    EXPECT_EQ(bench.Get(std::string(kFolderVerb) + "\\command", ""), program + " /f %1");
    EXPECT_EQ(GetRegDword(bench.machine->Registry(), kSettings, "Positions"), 1);

    // A fresh read sees them on; turned off, the verbs' keys go.
    for (std::string_view key : {kOptionContextMenu, kOptionChangeIcon, kOptionRestorePosition}) {
        EXPECT_TRUE(bench.tree.ReadCheck(*bench.tree.Find(key)->row, key)) << key;
    }
    bench.Toggle(kOptionContextMenu);
    bench.Toggle(kOptionChangeIcon);
    bench.Apply();
    EXPECT_FALSE(RegKeyExists(bench.machine->Registry(), kMyComputer));
    EXPECT_FALSE(RegKeyExists(bench.machine->Registry(), kFolderVerb));
}

TEST(StartupPage, RestoreDefaultsSetsTheTwoOptionsOnly) {
    TweakBench bench;
    bench.Built();
    BuildOptionGroup(bench.tree);
    bench.Toggle(kOptionContextMenu);
    bench.Toggle(kOptionChangeIcon);
    RestoreTweakDefaults(bench.tree, bench.state);
    EXPECT_EQ(bench.Image(kOptionContextMenu), kTweakImageOff);
    EXPECT_EQ(bench.Image(kOptionRestorePosition), kTweakImageOn);
    EXPECT_EQ(bench.Image(kOptionChangeIcon), kTweakImageOn);
}

TEST(StartupPage, DeleteAsksThenQueuesAndAddQueues) {
    TweakBench bench;
    bench.Set(kUserRun, "Clock", "C:\\clock.exe");
    bench.Built();
    BuildStartupListNodes(bench.tree);
    const std::string clock = "User Run\\Clock";
    ASSERT_NE(bench.tree.Find(clock), nullptr);
    EXPECT_EQ(bench.tree.Find(clock)->text, "Clock");
    EXPECT_EQ(StartupListOf(bench.tree, "Run Services"), StartupList::RunServices);
    EXPECT_EQ(StartupListOf(bench.tree, "Beep On Errors"), std::nullopt);

    bench.prompt.Answer({PromptAnswer::Press(0)});  // "No"
    MsgContext messages = bench.Messages();
    EXPECT_FALSE(DeleteStartupNode(bench.tree, messages, clock));
    EXPECT_EQ(bench.prompt.Shown().back().text, "Are you sure you want to permanently delete 'Clock'?");
    EXPECT_NE(bench.tree.Find(clock), nullptr);
    EXPECT_FALSE(DeleteStartupNode(bench.tree, messages, "Beep On Errors"));

    bench.prompt.Answer({PromptAnswer::Press(1)});  // "Yes"
    EXPECT_TRUE(DeleteStartupNode(bench.tree, messages, clock));
    EXPECT_EQ(bench.tree.Find(clock), nullptr);
    EXPECT_EQ(bench.Get(kUserRun, "Clock"), "C:\\clock.exe");  // not before Apply

    EXPECT_FALSE(AddStartupNode(bench.tree, bench.state, StartupList::Uninstall, "X", "x.exe"));
    EXPECT_TRUE(AddStartupNode(bench.tree, bench.state, StartupList::Run, "Agent", "C:\\agent.exe"));
    const auto& nodes = bench.tree.Nodes();
    const auto agent =
        std::find_if(nodes.begin(), nodes.end(), [](const TweakNode& n) { return n.key == "Run\\Agent"; });
    ASSERT_NE(agent, nodes.end());
    EXPECT_EQ((agent - 1)->key, "Run");  // under its group
    EXPECT_TRUE(bench.state.applyEnabled);

    ApplyStartupLists(bench.tree, bench.machine->Registry());
    EXPECT_EQ(bench.Get(kUserRun, "Clock"), kRegError);
    EXPECT_EQ(bench.Get("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run", "Agent"),
              "C:\\agent.exe");
}

}  // namespace
}  // namespace glyphmoor
