// A folder's and a drive's own icon: the files and attributes after each
// step, the questions of "Default Icon", and the way back through Undo all.
#include "folders/FolderIcon.h"
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/Baseline.h"
#include "foundation/HostFiles.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kFolder = kAttrDirectory;
constexpr std::uint32_t kSystemFolder = kAttrDirectory | kAttrSystem;
constexpr std::uint32_t kHiddenFile = kAttrArchive | kAttrHidden;

const FolderItem kWork{"C:\\Work", FolderItemKind::Folder};
const FolderItem kDriveC{"C:\\", FolderItemKind::Drive};

class FolderIcons : public ::testing::Test {
protected:
    FolderIcons() : m_machine(m_folder.Open()), m_app(InitEnvironment(m_machine->Env())) {
        fs::create_directories(Host("C:\\Work"));
        Write("C:\\Work\\notes.txt", "keep me");
    }

    fs::path Host(std::string_view windowsPath) const { return m_machine->Env().HostPath(windowsPath); }
    void Write(std::string_view windowsPath, std::string_view text) const {
        std::ofstream(Host(windowsPath), std::ios::binary) << text;
    }
    std::optional<std::string> Read(std::string_view windowsPath) const {
        return FileBytes(Host(windowsPath));
    }
    std::optional<std::uint32_t> Attributes(std::string_view windowsPath) const {
        return ReadHostAttributes(Host(windowsPath));
    }
    // "Default Icon" with the prompt's answers scripted.
    FolderRestore Restore(const FolderItem& item, std::initializer_list<PromptAnswer> answers) {
        m_prompt = std::make_unique<ScriptedPrompt>(m_machine->Sys(), m_app.helpFile, answers);
        MsgContext messages{*m_prompt, m_machine->Registry(), m_machine->Sys(), m_app, m_state};
        return RestoreFolderIcon(messages, *m_machine, item);
    }
    const std::vector<std::string>& SystemCalls() const {
        return dynamic_cast<RecordingSystem&>(m_machine->Sys()).Calls();
    }

    TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
    AppState m_state;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

TEST_F(FolderIcons, FolderStepByStep) {
    ASSERT_TRUE(SetFolderIcon(*m_machine, kWork, {"C:\\WINDOWS\\SYSTEM\\shell32.dll", 4}).ok());
    EXPECT_EQ(Read("C:\\Work\\desktop.ini"),
              "[.ShellClassInfo]\r\nIconFile=C:\\WINDOWS\\SYSTEM\\shell32.dll\r\nIconIndex=4\r\n");
    EXPECT_EQ(Attributes("C:\\Work"), kSystemFolder);
    EXPECT_EQ(Attributes("C:\\Work\\desktop.ini"), kHiddenFile);
    EXPECT_EQ(SystemCalls().back(), "WM_SETTINGCHANGE 0x2e 0");
    EXPECT_EQ(ReadFolderIcon(m_machine->Env(), kWork), (IconLocation{"C:\\WINDOWS\\SYSTEM\\shell32.dll", 4}));

    // A second icon replaces the keys; the hidden file stays hidden.
    ASSERT_TRUE(SetFolderIcon(*m_machine, kWork, {"C:\\Icons\\work.ico", 0}).ok());
    EXPECT_EQ(Read("C:\\Work\\desktop.ini"),
              "[.ShellClassInfo]\r\nIconFile=C:\\Icons\\work.ico\r\nIconIndex=0\r\n");
    EXPECT_EQ(Attributes("C:\\Work\\desktop.ini"), kHiddenFile);

    EXPECT_EQ(Restore(kWork, {PromptAnswer::Press(1)}), FolderRestore::Restored);
    EXPECT_EQ(m_prompt->Shown().at(0).text.substr(0, 40), "Restoring this icon will remove the 'des");
    EXPECT_FALSE(fs::exists(Host("C:\\Work\\desktop.ini")));
    EXPECT_EQ(Attributes("C:\\Work"), kFolder);
    EXPECT_EQ(Read("C:\\Work\\notes.txt"), "keep me");
    EXPECT_EQ(ReadFolderIcon(m_machine->Env(), kWork), std::nullopt);
}

TEST_F(FolderIcons, ExistingDesktopIniKeepsItsOtherEntries) {
    const std::string before =
        "; made by hand\r\n[.ShellClassInfo]\r\nInfoTip=Work things\r\nIconIndex=9\r\n"
        "[ViewState]\r\nMode=4\r\n";
    Write("C:\\Work\\desktop.ini", before);
    ASSERT_TRUE(SetFolderIcon(*m_machine, kWork, {"C:\\a.ico", 2}).ok());
    EXPECT_EQ(
        Read("C:\\Work\\desktop.ini"),
        "; made by hand\r\n[.ShellClassInfo]\r\nInfoTip=Work things\r\nIconIndex=2\r\nIconFile=C:\\a.ico\r\n"
        "[ViewState]\r\nMode=4\r\n");
}

TEST_F(FolderIcons, DriveStepByStep) {
    Write("C:\\autorun.inf", "[autorun]\nopen=setup.exe\n\n[Other]\nx=1\n");
    ASSERT_TRUE(SetFolderIcon(*m_machine, kDriveC, {"C:\\disk.ico", 0}).ok());
    EXPECT_EQ(Read("C:\\autorun.inf"), "[autorun]\nopen=setup.exe\nIcon=C:\\disk.ico,0\n\n[Other]\nx=1\n");
    EXPECT_EQ(Attributes("C:\\"), kFolder);
    EXPECT_EQ(ReadFolderIcon(m_machine->Env(), kDriveC), (IconLocation{"C:\\disk.ico", 0}));

    // Restoring a drive takes the whole autorun.inf, its other entries too.
    EXPECT_EQ(Restore(kDriveC, {PromptAnswer::Press(1)}), FolderRestore::Restored);
    EXPECT_EQ(m_prompt->Shown().at(0).text.substr(0, 56),
              "Restoring this icon will remove the 'autorun.inf' file f");
    EXPECT_FALSE(fs::exists(Host("C:\\autorun.inf")));
    EXPECT_EQ(Read("C:\\Work\\notes.txt"), "keep me");
}

TEST_F(FolderIcons, RestoreWithoutCustomIconOrDeclinedChangesNothing) {
    struct Case {
        const char* name;
        FolderItem item;
        std::optional<std::string> iniBefore;
        PromptAnswer answer;
        FolderRestore outcome;
    };
    const std::string workIni = "[.ShellClassInfo]\r\nIconFile=a.ico\r\n";
    const std::vector<Case> cases = {
        {"folder without desktop.ini", kWork, std::nullopt, PromptAnswer::Press(0),
         FolderRestore::NotCustomised},
        {"desktop.ini without IconFile", kWork, "[.ShellClassInfo]\r\nInfoTip=x\r\n", PromptAnswer::Press(0),
         FolderRestore::NotCustomised},
        {"folder, Cancel", kWork, workIni, PromptAnswer::Press(0), FolderRestore::Declined},
        {"folder, Escape", kWork, workIni, PromptAnswer::Escape(), FolderRestore::Declined},
        {"drive without Icon", kDriveC, "[autorun]\r\nopen=x.exe\r\n", PromptAnswer::Press(0),
         FolderRestore::NotCustomised},
        {"drive, Cancel", kDriveC, "[autorun]\r\nicon=d.ico\r\n", PromptAnswer::Press(0),
         FolderRestore::Declined},
    };
    for (const Case& c : cases) {
        const std::string ini = IconFileOf(c.item);
        fs::remove(Host(ini));
        if (c.iniBefore) {
            Write(ini, *c.iniBefore);
        }
        ASSERT_TRUE(WriteHostAttributes(Host(c.item.path), kAttrSystem).ok());
        EXPECT_EQ(Restore(c.item, {c.answer}), c.outcome) << c.name;
        ASSERT_EQ(m_prompt->Shown().size(), 1U) << c.name;
        if (c.outcome == FolderRestore::NotCustomised) {
            EXPECT_EQ(m_prompt->Shown()[0].text,
                      "You must select a customised folder or hard drive before it can be restored to the "
                      "default icon.")
                << c.name;
        }
        EXPECT_EQ(Read(ini), c.iniBefore) << c.name;
        EXPECT_EQ(Attributes(c.item.path), kSystemFolder) << c.name;
    }
    EXPECT_TRUE(SystemCalls().empty());
}

TEST_F(FolderIcons, ReadsWhatTheFilesHold) {
    struct Case {
        FolderItem item;
        const char* ini;
        std::optional<IconLocation> icon;
    };
    const std::vector<Case> cases = {
        {kWork, "[.ShellClassInfo]\nIconFile=C:\\a.ico\n", IconLocation{"C:\\a.ico", 0}},
        {kWork, "[.shellclassinfo]\niconfile = b.dll\nIconIndex= -3\n", IconLocation{"b.dll", -3}},
        {kWork, "[.ShellClassInfo]\nIconFile=c.dll\nIconIndex=x\n", IconLocation{"c.dll", 0}},
        {kWork, "[.ShellClassInfo]\nIconIndex=2\n", std::nullopt},
        {kWork, "[Other]\nIconFile=a.ico\n", std::nullopt},
        {kDriveC, "[AUTORUN]\nIcon=d.ico\n", IconLocation{"d.ico", 0}},
        {kDriveC, "[autorun]\nicon=C:\\x,y.dll,5\n", IconLocation{"C:\\x,y.dll", 5}},
        {kDriveC, "[autorun]\nopen=setup.exe\n", std::nullopt},
    };
    for (const Case& c : cases) {
        Write(IconFileOf(c.item), c.ini);
        EXPECT_EQ(ReadFolderIcon(m_machine->Env(), c.item), c.icon) << c.ini;
    }
}

TEST(FolderIconFile, RelativeNamesLieInTheItem) {
    struct Case {
        FolderItem item;
        const char* file;
        const char* path;
    };
    const std::vector<Case> cases = {
        {kWork, "work.ico", "C:\\Work\\work.ico"},
        {kWork, "C:\\WINDOWS\\x.dll", "C:\\WINDOWS\\x.dll"},
        {kWork, "\\Icons\\w.ico", "C:\\Icons\\w.ico"},
        {kDriveC, "disk.ico", "C:\\disk.ico"},
        {kDriveC, "\\\\server\\share\\d.ico", "\\\\server\\share\\d.ico"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IconFileInItem(c.item, c.file), c.path) << c.file;
    }
}

TEST_F(FolderIcons, MissingFolderIsAnErrorAndNothingIsMade) {
    const FolderItem missing{"C:\\Work\\Nowhere", FolderItemKind::Folder};
    const Status set = SetFolderIcon(*m_machine, missing, {"C:\\a.ico", 0});
    ASSERT_FALSE(set.ok());
    EXPECT_EQ(set.reason(), "the machine has no folder C:\\Work\\Nowhere");
    EXPECT_FALSE(fs::exists(Host("C:\\Work\\Nowhere")));
    EXPECT_FALSE(RemoveFolderIcon(*m_machine, missing).ok());
    EXPECT_TRUE(PlanUndo(m_machine->Registry().Inner(), m_machine->Env()).files.empty());
}

// Undo all removes the icon files the program made, puts back a desktop.ini
// it changed or removed, byte for byte, and the folders' attributes.
TEST_F(FolderIcons, UndoAllGivesBackEveryIconFileAndFolderAsItWas) {
    const std::string theirs = "[.ShellClassInfo]\r\nInfoTip=mine\r\n";
    for (const char* folder : {"C:\\Work\\Old", "C:\\Work\\Gone"}) {
        fs::create_directories(Host(folder));
        Write(std::string(folder) + "\\desktop.ini", theirs);
        ASSERT_TRUE(WriteHostAttributes(Host(std::string(folder) + "\\desktop.ini"), kAttrHidden).ok());
    }
    const FolderItem old{"C:\\Work\\Old", FolderItemKind::Folder};
    const FolderItem gone{"C:\\Work\\Gone", FolderItemKind::Folder};
    ASSERT_TRUE(SetFolderIcon(*m_machine, kWork, {"C:\\a.ico", 0}).ok());
    ASSERT_TRUE(SetFolderIcon(*m_machine, old, {"C:\\a.ico", 0}).ok());
    ASSERT_TRUE(RemoveFolderIcon(*m_machine, gone).ok());
    ASSERT_TRUE(SetFolderIcon(*m_machine, kDriveC, {"C:\\a.ico", 0}).ok());

    auto reopened = m_folder.Open();  // the records were saved before the changes
    const UndoPlan plan = PlanUndo(reopened->Registry().Inner(), reopened->Env());
    auto lists = [&](std::string_view line) {
        const auto described = DescribeUndo(plan);
        return std::find(described.begin(), described.end(), line) != described.end();
    };
    EXPECT_TRUE(lists("remove file\tC:\\Work\\desktop.ini"));
    EXPECT_TRUE(lists("remove file\tC:\\autorun.inf"));
    EXPECT_TRUE(lists("restore file\tC:\\Work\\Old\\desktop.ini"));
    EXPECT_TRUE(lists("restore file\tC:\\Work\\Gone\\desktop.ini"));
    EXPECT_TRUE(lists("restore file\tC:\\Work"));

    EXPECT_EQ(UndoAll(reopened->Registry().Inner(), reopened->Env()), std::vector<std::string>{});
    EXPECT_FALSE(fs::exists(Host("C:\\Work\\desktop.ini")));
    EXPECT_FALSE(fs::exists(Host("C:\\autorun.inf")));
    for (const char* folder : {"C:\\Work", "C:\\Work\\Old", "C:\\Work\\Gone"}) {
        SCOPED_TRACE(folder);
        EXPECT_EQ(Attributes(folder), kFolder);
    }
    for (const char* ini : {"C:\\Work\\Old\\desktop.ini", "C:\\Work\\Gone\\desktop.ini"}) {
        SCOPED_TRACE(ini);
        EXPECT_EQ(Read(ini), theirs);
        EXPECT_EQ(Attributes(ini), kHiddenFile);
    }
}

}  // namespace
}  // namespace glyphmoor::test
