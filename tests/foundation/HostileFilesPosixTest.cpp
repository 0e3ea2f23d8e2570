// Hives and profile files that are not what they should be: folders, pipes,
// links, read-only files and the leftovers of killed saves. Each is refused
// with a message or handled as the file it stands for; none hangs or aborts.
#include "foundation/FileIo.h"
#include "foundation/Machine.h"
#include "foundation/modProfile.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <string>

namespace glyphmoor::test {
namespace {

constexpr std::string_view kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";

void MakeFifo(const std::filesystem::path& path) {
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0);
}

void MakeFolder(const std::filesystem::path& path) {
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
}

TEST(HostileFiles, OnlyRegularFilesAreRead) {
    struct Case {
        const char* what;
        const char* file;  // in the machine folder
        std::function<void(const std::filesystem::path&)> make;
        bool hive;         // else an INI file
        const char* says;  // in the reason
    };
    const Case cases[] = {
        {"a hive that is a folder", "user.reg", MakeFolder, true, "is a folder"},
        {"a hive that is a pipe", "system.reg", MakeFifo, true, "not a regular file"},
        {"an INI file that is a pipe", "theme.ini", MakeFifo, false, "not a regular file"},
        {"an INI file that is a folder", "theme.ini", MakeFolder, false, "folder"},
    };
    for (const auto& c : cases) {
        TempMachine folder;
        const auto path = folder.Dir() / c.file;
        c.make(path);
        if (c.hive) {
            auto machine = OpenMachineFolder(folder.Dir());
            ASSERT_FALSE(machine.ok()) << c.what;
            EXPECT_NE(machine.reason().find(path.string()), std::string::npos) << machine.reason();
            EXPECT_NE(machine.reason().find(c.says), std::string::npos) << machine.reason();
        } else {
            auto loaded = LoadProfileFile(path);
            ASSERT_FALSE(loaded.ok()) << c.what;
            EXPECT_NE(loaded.reason().find(c.says), std::string::npos) << loaded.reason();
            EXPECT_EQ(ReadProfileValue(path, "Section", "Key", "unread"), "unread") << c.what;
            const Status written = WriteProfileValue(path, "Section", "Key", "v");
            ASSERT_FALSE(written.ok()) << c.what;
            EXPECT_NE(written.reason().find(c.says), std::string::npos) << written.reason();
        }
        const auto status = std::filesystem::symlink_status(path);
        EXPECT_FALSE(std::filesystem::is_regular_file(status)) << c.what << ": left as it was";
    }
}

TEST(HostileFiles, SavesRemoveTheLeftoversOfKilledSaves) {
    TempMachine folder;
    const std::vector<std::string> leftovers = {".user.reg.123456.tmp", ".user.reg.7.tmp"};
    // Files of other names, and leftovers of the hive that is not saved, stay.
    const std::vector<std::string> others = {".user.reg.tmp", ".user.reg.12a.tmp", "user.reg.5.tmp",
                                             ".system.reg.42.tmp", ".user.reg.9.tmp.keep"};
    for (const auto& name : leftovers) {
        folder.Folder().Write(name, std::string(1000, 'x'));
    }
    for (const auto& name : others) {
        folder.Folder().Write(name, "kept");
    }
    auto machine = folder.Open();
    SetRegString(machine->Registry(), kSettings, "Left", "1");
    ASSERT_TRUE(machine->Save().ok());
    for (const auto& name : leftovers) {
        EXPECT_FALSE(std::filesystem::exists(folder.Dir() / name)) << name;
    }
    for (const auto& name : others) {
        EXPECT_TRUE(std::filesystem::exists(folder.Dir() / name)) << name;
    }
}

TEST(HostileFiles, AHiveThatIsALinkIsWrittenThroughTheLink) {
    TempMachine folder;
    TempDir elsewhere;
    std::filesystem::rename(folder.Dir() / "user.reg", elsewhere.Path() / "real.reg");
    std::filesystem::create_symlink(elsewhere.Path() / "real.reg", folder.Dir() / "user.reg");
    auto machine = folder.Open();
    SetRegString(machine->Registry(), kSettings, "Left", "linked");
    ASSERT_TRUE(machine->Save().ok());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Dir() / "user.reg"));
    EXPECT_NE(elsewhere.Read("real.reg").find("\"Left\"=\"linked\""), std::string::npos);
    EXPECT_EQ(GetRegString(folder.Open()->Registry(), kSettings, "Left"), "linked");
}

TEST(HostileFiles, AReadOnlyHiveIsRefusedForWritingAndNothingIsWritten) {
    TempMachine folder;
    const auto user = folder.Dir() / "user.reg";
    std::filesystem::permissions(user,
                                 std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                     std::filesystem::perms::others_write,
                                 std::filesystem::perm_options::remove);
    const std::string userBefore = folder.Folder().Read("user.reg");
    const std::string systemBefore = folder.Folder().Read("system.reg");
    auto machine = folder.Open();
    SetRegString(machine->Registry(), "HKEY_LOCAL_MACHINE\\Software\\A", "v", "1");
    SetRegString(machine->Registry(), kSettings, "Left", "1");
    const Status saved = machine->Save();
    ASSERT_FALSE(saved.ok());
    EXPECT_NE(saved.reason().find(user.string() + " is read-only"), std::string::npos) << saved.reason();
    EXPECT_EQ(folder.Folder().Read("user.reg"), userBefore);
    EXPECT_EQ(folder.Folder().Read("system.reg"), systemBefore);
}

}  // namespace
}  // namespace glyphmoor::test
