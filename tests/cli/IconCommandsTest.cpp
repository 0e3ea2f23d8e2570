#include "CliRun.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <map>

namespace glyphmoor::test {
namespace {

// A line of the list for an entry at its default: group, display name,
// catalogue name, then file and index twice.
std::string Line(const std::vector<std::string>& f) {
    return f[0] + "\t" + f[1] + "\t" + f[2] + "\t" + f[3] + "\t" + f[4] + "\t" + f[3] + "\t" + f[4] + "\n";
}

using DefaultMachineIcons = DefaultMachineCli;

TEST_F(DefaultMachineIcons, ListsEveryGroupAsWindows98WithTheDesktopUpdateShell) {
    const CliRun run = Run({"icons"});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = TabFields(run.out);
    std::map<std::string, int> perGroup;
    for (const auto& fields : lines) {
        ASSERT_EQ(fields.size(), 7U) << fields[0];
        ++perGroup[fields[0]];
    }
    // Every row a Windows 98 machine with the desktop-update shell has: all but the
    // Windows NT common groups, and the Zip File row (no zip type registered).
    const std::map<std::string, int> expected = {{"1", 8}, {"2", 12}, {"3", 11}, {"4", 8},
                                                 {"5", 7}, {"6", 17}, {"7", 15}};
    EXPECT_EQ(perGroup, expected);

    const std::string out = run.out;
    const std::string sys = "C:\\WINDOWS\\SYSTEM\\";
    const std::string program = "C:\\Program Files\\Glyphmoor\\Glyphmoor.exe";
    for (const std::string& line : {
             Line({"1", "My Computer", "My Computer", "C:\\WINDOWS\\explorer.exe", "0"}),
             Line({"1", "Internet Explorer", "The Internet", sys + "mshtml.dll", "0"}),
             Line({"2", "Log Off...", "Log Off", sys + "shell32.dll", "44"}),
             Line({"3", "Url History", "", sys + "shdocvw.dll", "36"}),
             Line({"4", "Floppy Drive 5\u00bc", "", sys + "shell32.dll", "5"}),
             Line({"6", "Text Document", "", sys + "shell32.dll", "64"}),
             Line({"7", "Hand", "", program, "15"}),
         }) {
        EXPECT_NE(out.find(line), std::string::npos) << line;
    }

    // One group alone prints exactly its lines of the whole list.
    const CliRun cursors = Run({"icons", "--group", "7"});
    ASSERT_EQ(cursors.status, 0) << cursors.err;
    EXPECT_EQ(out.substr(out.find("\n7\t") + 1), cursors.out);
}

// A group is named (in any case) or numbered; what is neither is refused.
TEST(IconCommands, TakesAGroupByNameOrNumber) {
    TempMachine machine;
    const CliRun byNumber = Cli(machine, {"icons", "--group", "2"});
    EXPECT_EQ(byNumber.status, kExitOk);
    EXPECT_EQ(byNumber.out.substr(0, 2), "2\t");
    EXPECT_EQ(Cli(machine, {"icons", "--group", "start icons"}).out, byNumber.out);
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"icons", "--group", "0"},
             {"icons", "--group", "8"},
             {"icons", "--group", "Pointers"},
             {"icons", "--group"},
             {"icons", "7"},
         }) {
        const CliRun run = Cli(machine, args);
        EXPECT_EQ(run.status, kExitUsage) << args.back();
        EXPECT_EQ(run.out, "") << args.back();
        EXPECT_NE(run.err.find("usage: glyphmoor-cli icons [--group N]"), std::string::npos) << args.back();
    }
}

// An icon library (the default machine's shell32.dll) and a pointer file at
// C:\lib.dll and C:\busy.ani of the machine.
void PutIconFiles(const TempMachine& machine) {
    const std::filesystem::path driveC = machine.Dir() / "drive_c";
    std::filesystem::create_directories(driveC);
    std::filesystem::copy_file(SeedDirs().back() / "drive_c/WINDOWS/SYSTEM/shell32.dll", driveC / "lib.dll");
    std::ofstream(driveC / "busy.ani") << "RIFF";
}

// The staging commands apply and save, and refuse what the machine cannot
// draw: each row runs one command on a fresh machine, then reads a registry
// value back with "reg read". The editing rules are the icons tests'.
TEST(IconCommands, StagingCommandsApplyAndSave) {
    const std::string shellIcons =
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
    const std::string myComputer =
        "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
    struct Row {
        std::vector<std::string> args;
        int status;
        std::string path;
        std::string name;
        std::string value;  // what "reg read" prints afterwards
    };
    const std::vector<Row> rows = {
        {{"icons", "set", "2", "Run", "C:\\lib.dll,3"}, 0, shellIcons, "24", "C:\\lib.dll,3"},
        // A location the machine cannot draw is refused and nothing is written.
        {{"icons", "set", "2", "Run", "C:\\none.dll,3"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "2", "Run", "C:\\lib.dll,4000"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "2", "Run", "C:\\lib.dll,-4000"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "Cursors", "Busy", "C:\\lib.dll"},
         1,
         "HKEY_CURRENT_USER\\Control Panel\\Cursors",
         "Wait",
         "Error"},
        {{"icons", "set", "Cursors", "Busy", "C:\\busy.ani"},
         0,
         "HKEY_CURRENT_USER\\Control Panel\\Cursors",
         "Wait",
         "C:\\busy.ani"},
        {{"icons", "rename", "1", "My Computer", "Workstation"}, 0, myComputer, "", "Workstation"},
        // Already the default: nothing is written.
        {{"icons", "restore", "1", "My Computer"}, 0, myComputer + "\\DefaultIcon", "", "Error"},
        {{"icons", "rename", "2", "Run", "Go"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "9", "Run", "C:\\a.ico"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "2", "Nothing", "C:\\a.ico"}, 1, shellIcons, "24", "Error"},
        {{"icons", "set", "2", "Run", "C:\\a.ico,x"}, 2, shellIcons, "24", "Error"},
        {{"icons", "restore-all"}, 1, shellIcons, "24", "Error"},
        {{"icons", "restore-all", "--yes"}, 0, shellIcons, "24", "C:\\WINDOWS\\SYSTEM\\shell32.dll,24"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.args[1] + " " + row.args[3 % row.args.size()]);
        TempMachine machine;
        PutIconFiles(machine);
        const CliRun run = Cli(machine, row.args);
        EXPECT_EQ(run.status, row.status) << run.err;
        EXPECT_EQ(run.out, "");
        const CliRun read = Cli(machine, {"reg", "read", row.path, row.name});
        EXPECT_EQ(read.out, row.value + "\n");
    }
}

TEST(IconCommands, AnIconChangeRebuildsTheIconCacheAsApplyDoes) {
    // The rebuild leaves "Shell Icon Size" written back even where there was none;
    // a pointer change needs no rebuild.
    const std::string metrics = "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics";
    struct Case {
        std::vector<std::string> change;
        std::string size;
    };
    const Case cases[] = {
        {{"icons", "set", "2", "Run", "C:\\lib.dll,3"}, "32"},
        {{"icons", "set", "Cursors", "Busy", "C:\\busy.ani"}, "Error"},
    };
    for (const auto& k : cases) {
        TempMachine machine;
        PutIconFiles(machine);
        ASSERT_EQ(Cli(machine, k.change).status, kExitOk);
        EXPECT_EQ(Cli(machine, {"reg", "read", metrics, "Shell Icon Size"}).out, k.size + "\n")
            << k.change[2];
    }
}

TEST(IconCommands, RestoringAllAsksTheWindowsQuestionFirst) {
    TempMachine machine;
    const CliRun run = Cli(machine, {"icons", "restore-all", "--cursors"});
    EXPECT_EQ(run.status, kExitFailed);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(
                  "Restoring all your Windows 98 pointers will return them to Microsoft setup defaults.\n\n"
                  "Are you sure you want to continue?"),
              std::string::npos)
        << run.err;
}

TEST(UndoAllCommand, ShowsWhatReturnsThenReturnsIt) {
    TempMachine machine;
    PutIconFiles(machine);
    const std::string shellIcons =
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
    ASSERT_EQ(Cli(machine, {"icons", "set", "Start Icons", "Run", "C:\\lib.dll,3"}).status, kExitOk);

    const CliRun preview = Cli(machine, {"undo-all"});
    EXPECT_EQ(preview.status, kExitOk);
    EXPECT_NE(preview.out.find("delete value\t" + shellIcons + "\t24\n"), std::string::npos) << preview.out;
    EXPECT_NE(preview.out.find("remove file\tC:\\Program Files\\Glyphmoor\\Glyphmoor.exe\n"),
              std::string::npos);
    EXPECT_EQ(Cli(machine, {"reg", "read", shellIcons, "24"}).out, "C:\\lib.dll,3\n")
        << "the preview changes nothing";

    EXPECT_EQ(Cli(machine, {"undo-all", "--yes"}).status, kExitOk);
    EXPECT_EQ(Cli(machine, {"reg", "read", shellIcons, "24"}).out, "Error\n");
    EXPECT_FALSE(std::filesystem::exists(machine.Dir() / "drive_c/Program Files/Glyphmoor"));
    const CliRun again = Cli(machine, {"undo-all"});
    EXPECT_EQ(again.out, "");
    EXPECT_NE(again.err.find("as it was before the program first changed it"), std::string::npos);
    EXPECT_EQ(Cli(machine, {"undo-all", "--now"}).status, kExitUsage);
}

// A theme saved on a fresh machine makes the program's folder first, as a
// change does, so undoing knows the folder is the program's.
TEST(UndoAllCommand, KnowsTheProgramsFolderAThemeWasSavedInto) {
    TempMachine machine;
    ASSERT_EQ(Cli(machine, {"theme", "save", "C:\\Program Files\\Glyphmoor\\Themes\\Mine.gmtheme"}).status,
              kExitOk);
    const CliRun preview = Cli(machine, {"undo-all"});
    EXPECT_NE(preview.out.find("remove file\tC:\\Program Files\\Glyphmoor\n"), std::string::npos)
        << preview.out;
    EXPECT_NE(preview.out.find("remove file\tC:\\Program Files\\Glyphmoor\\Themes\n"), std::string::npos);
}

}  // namespace
}  // namespace glyphmoor::test
