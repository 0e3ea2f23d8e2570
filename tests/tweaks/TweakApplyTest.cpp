// Apply: what is written, in which order, which calls are made, on a
// described machine (whole groups) and on a Wine prefix (only what changed).
#include "tweaks/TweakBench.h"
#include "tweaks/TweakEditing.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace glyphmoor {
namespace {

using test::TweakBench;
using Lines = std::vector<std::string>;

constexpr std::string_view kDesk = "HKEY_CURRENT_USER\\Control Panel\\desktop";

std::string Write(std::string_view path, std::string_view name, std::string_view data) {
    return "write\t" + std::string(path) + "\t" + std::string(name) + "\t" + std::string(data);
}

std::string Send(std::string_view call) {
    return "send\t" + std::string(call);
}

// Only a changed group is written: once applied, it is written no more.
TEST(TweakApply, AChangedGroupIsWrittenWholeInOrderWithItsCalls) {
    TweakBench bench;
    bench.Built();
    bench.Toggle("Non-blinking Cursor");
    bench.Apply();
    const std::string sound = "HKEY_CURRENT_USER\\Control Panel\\Sound";
    const Lines expected = {
        Write(sound, "Beep", "Yes"),
        Send("SystemParametersInfo 0x2 1 null 0"),
        Write(kDesk, "CursorBlinkRate", "65535"),
        // The Run value is deleted too; there was none, so the log has no line for it.
        Send("ShellExecute \"Open\" \"C:\\Program Files\\Glyphmoor\\Taskbar.exe\" \" /u\" 1"),
        Write(kDesk, "SmoothScroll", "0"),
        Write(std::string(kDesk) + "\\WindowMetrics", "MinAnimate", "1"),
        Send("SystemParametersInfo 0x49 8 {8, 1} 3"),
    };
    EXPECT_EQ(bench.log.Lines(), expected);
    EXPECT_FALSE(bench.tree.GroupChanged("General"));
    bench.log = ChangeLog();
    bench.Apply();
    EXPECT_TRUE(bench.log.Lines().empty());
}

TEST(TweakApply, GroupsAreWrittenInApplyOrder) {
    TweakBench bench;
    bench.Built();
    bench.Toggle("Remove 'Run' Command");
    bench.Toggle("Swap Mouse Buttons");
    bench.Toggle("Large Icons");
    bench.Apply();
    Lines paths;
    for (const std::string& line : bench.log.Lines()) {
        if (line.starts_with("write")) {
            paths.push_back(line.substr(line.find('\t', 6) + 1, line.rfind('\t') - line.find('\t', 6) - 1));
        }
    }
    ASSERT_GE(paths.size(), 4U);
    EXPECT_EQ(paths.front(), "Shell Icon Size");
    EXPECT_EQ(paths.back(), "NoClose");
    const auto at = [&](std::string_view name) {
        return std::find(paths.begin(), paths.end(), name) - paths.begin();
    };
    EXPECT_LT(at("IconTitleWrap"), at("SwapMouseButtons"));
    EXPECT_LT(at("DoubleClickSpeed"), at("NoNetHood"));
}

// That 2 then reads as off is the read rules' table.
TEST(TweakApply, FontSmoothingOnNtWritesTwo) {
    TweakBench bench(test::WinNtSystem());
    bench.Built();
    bench.Toggle("Font Smoothing");
    bench.Apply();
    EXPECT_EQ(bench.log.Lines().at(0), Write(kDesk, "FontSmoothing", "2"));
    EXPECT_EQ(bench.log.Lines().at(1), Send("SystemParametersInfo 0x4b 2 null 0"));
}

TEST(TweakApply, StretchReappliesTheWallpaperAndDelayUntilClickedHasTheLastWord) {
    TweakBench bench(test::WinNtSystem());
    bench.Set(kDesk, "Wallpaper", "C:\\WINNT\\clouds.bmp");
    bench.Built();
    bench.Toggle("Stretch Desktop Wallpaper");
    bench.Toggle("Delay Until Clicked");
    ScrollTweakValue(bench.tree, bench.state, "Menu Show Delay", 250);
    bench.Apply();
    const Lines& lines = bench.log.Lines();
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        Send("SystemParametersInfo 0x14 0 \"C:\\WINNT\\clouds.bmp\" 3")),
              lines.end());
    EXPECT_EQ(bench.Get(kDesk, "MenuShowDelay"), "65535");
    bench.Toggle("Delay Until Clicked");
    bench.Apply();
    EXPECT_EQ(bench.Get(kDesk, "MenuShowDelay"), "250");
}

TEST(TweakApply, MenuVerbsAreMadeAndDeletedWithTheirCommandKeys) {
    TweakBench bench;
    bench.Built();
    bench.Toggle("Explore From Here");
    bench.Apply();
    EXPECT_EQ(bench.Get("HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore\\Command", ""),
              "EXPLORER.EXE /E,/Root,/IDList,%I");
    EXPECT_EQ(bench.Get("HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore", ""), "E&xplore From Here");
    bench.Toggle("Explore From Here");
    bench.log = ChangeLog();
    bench.Apply();
    EXPECT_FALSE(RegKeyExists(bench.machine->Registry(), "HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore"));
    const Lines deletes = {"delete-key\tHKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore\tCommand",
                           "delete-key\tHKEY_CLASSES_ROOT\\Folder\\Shell\tRootExplore"};
    Lines seen;
    for (const std::string& line : bench.log.Lines()) {
        if (line.starts_with("delete-key")) {
            seen.push_back(line);
        }
    }
    EXPECT_EQ(seen, deletes);
}

TEST(TweakApply, CascadingMenusMakeAndRemoveTheirFolders) {
    TweakBench bench;
    const std::string startMenu = "C:\\WINDOWS\\Start Menu";
    bench.Set("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
              "Start Menu", startMenu);
    std::filesystem::create_directories(bench.machine->Env().HostPath(startMenu));
    const std::string key = "Recycle Bin.{645FF040-5081-101B-9F08-00AA002F954E}";
    const auto folder = bench.machine->Env().HostPath(startMenu + "\\" + key);
    bench.Built();
    bench.Toggle(key);
    bench.Apply();
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    bench.Toggle(key);
    bench.Apply();
    EXPECT_FALSE(std::filesystem::exists(folder));

    // Through the machine the folder is made by the save that writes the
    // registry, in the same change, so a kill never leaves it without its record.
    TweakApplyHooks hooks;
    hooks.makeFolder = [&](const std::string& path) { EXPECT_TRUE(bench.machine->MakeFolder(path).ok()); };
    bench.Toggle(key);
    ApplyTweaks(bench.tree, bench.logged, bench.loggedSystem, hooks);
    EXPECT_FALSE(std::filesystem::exists(folder));
    ASSERT_TRUE(bench.machine->Save().ok());
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    hooks.removeFolder = [&](const std::string& path) {
        EXPECT_TRUE(bench.machine->RemoveFolder(path).ok());
    };
    bench.Toggle(key);
    ApplyTweaks(bench.tree, bench.logged, bench.loggedSystem, hooks);
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    ASSERT_TRUE(bench.machine->Save().ok());
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(TweakApply, OnAWinePrefixOnlyChangedItemsAreWritten) {
    TweakBench bench(test::WinePrefixSystem());
    ASSERT_TRUE(KeepsOwnDefaults(bench.app.kind));
    bench.Set(kDesk, "CursorBlinkRate", "530");
    bench.Built();
    bench.Toggle("Smooth Scrolling");
    ScrollTweakValue(bench.tree, bench.state, "Drag Width", 6);
    bench.Apply();
    const Lines expected = {
        "write\t" + std::string(kDesk) + "\tSmoothScroll\t1",
        Write(kDesk, "DragWidth", "6"),
        Send("SystemParametersInfo 0x4c 6 null 0"),
    };
    EXPECT_EQ(bench.log.Lines(), expected);
    EXPECT_EQ(bench.Get(kDesk, "CursorBlinkRate"), "530");
    EXPECT_EQ(bench.Get("HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep"), "Error");

    // Restoring defaults puts back only what the program changed.
    bench.log = ChangeLog();
    RestoreTweakDefaults(bench.tree, bench.state);
    bench.Apply();
    for (const std::string& line : bench.log.Lines()) {
        EXPECT_EQ(line.find("Beep"), std::string::npos) << line;
        EXPECT_EQ(line.find("MenuShowDelay"), std::string::npos) << line;
    }
    EXPECT_EQ(bench.Get(kDesk, "SmoothScroll"), "Error");
}

TEST(TweakApply, OnAWinePrefixRestoringPutsBackWhatTheMachineHeld) {
    TweakBench bench(test::WinePrefixSystem());
    bench.Set(kDesk, "DragWidth", "4");
    bench.Built();
    ScrollTweakValue(bench.tree, bench.state, "Drag Width", 9);
    bench.Toggle("Smooth Scrolling");
    bench.Toggle("Swap Mouse Buttons");
    bench.Toggle("Swap Mouse Buttons");  // and back: never written
    bench.Apply();
    ASSERT_EQ(bench.Get(kDesk, "DragWidth"), "9");

    bench.log = ChangeLog();
    RestoreTweakDefaults(bench.tree, bench.state);
    EXPECT_EQ(bench.tree.Find("Drag Width")->pending, "4");
    EXPECT_EQ(bench.Image("Smooth Scrolling"), kTweakImageOff);
    EXPECT_EQ(bench.Image("Beep On Errors"), kTweakImageOn);  // never changed: the machine's own
    bench.Apply();
    const Lines expected = {
        "delete-value\t" + std::string(kDesk) + "\tSmoothScroll",
        Write(kDesk, "DragWidth", "4"),
        Send("SystemParametersInfo 0x4c 4 null 0"),
    };
    EXPECT_EQ(bench.log.Lines(), expected);
    EXPECT_EQ(bench.Get("HKEY_CURRENT_USER\\Control Panel\\Mouse", "SwapMouseButtons"), "Error");
}

}  // namespace
}  // namespace glyphmoor
