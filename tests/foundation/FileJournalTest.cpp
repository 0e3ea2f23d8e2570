// Files replaced together: all old or all new, wherever the change stops.
#include "foundation/FileJournal.h"
#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace glyphmoor::test {
namespace {

const std::vector<std::string> kNames = {"system.reg", "user.reg", "userdef.reg"};

std::vector<std::string> FolderNames(const std::filesystem::path& dir) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void WriteAll(const TempDir& dir, std::string_view text) {
    for (const auto& name : kNames) {
        dir.Write(name, std::string(text) + name);
    }
}

void ExpectAll(const TempDir& dir, std::string_view text, const std::string& when) {
    for (const auto& name : kNames) {
        EXPECT_EQ(dir.Read(name), std::string(text) + name) << when;
    }
}

std::vector<FileReplacement> NewFiles(const TempDir& dir) {
    std::vector<FileReplacement> files;
    for (const auto& name : kNames) {
        files.push_back(FileReplacement{dir.Path() / name, "new " + name});
    }
    return files;
}

std::size_t Fwrite(std::FILE* file, std::string_view chunk) {
    return std::fwrite(chunk.data(), 1, chunk.size(), file);
}

TEST(FileJournal, ReplacesEveryFileOrNone) {
    const struct {
        const char* what;
        int failingWrite;  // the chunk whose writing fails; -1 for none
        const char* expected;
    } cases[] = {
        {"every write succeeds", -1, "new "},
        {"the first file cannot be written", 0, "old "},
        {"the last file cannot be written", 2, "old "},
    };
    for (const auto& c : cases) {
        TempDir dir;
        TempDir drive;  // folders made with the files, parents first
        const FolderChanges folders = {{drive.Path() / "Program", drive.Path() / "Program/Themes"}, {}};
        WriteAll(dir, "old ");
        int writes = 0;
        const Status status = ReplaceFilesTogether(
            dir.Path() / ".journal", NewFiles(dir), folders, [&](std::FILE* file, std::string_view chunk) {
                return writes++ == c.failingWrite ? 0 : Fwrite(file, chunk);
            });
        EXPECT_EQ(status.ok(), c.failingWrite < 0) << c.what;
        ExpectAll(dir, c.expected, c.what);
        EXPECT_EQ(FolderNames(dir.Path()), kNames) << c.what << ": no journal and no new file is left";
        EXPECT_EQ(std::filesystem::is_directory(folders.make[1]), c.failingWrite < 0) << c.what;
    }
}

// The state a save killed after its journal was written leaves: the journal,
// and the first `renamed` of the staged files already in place.
void LeaveKilledSave(const TempDir& dir, std::size_t renamed, const std::filesystem::path& folder) {
    std::string journal = "Glyphmoor journal 1\n+\t" + folder.string() + "\n";
    std::vector<StagedFile> staged;
    for (const auto& file : NewFiles(dir)) {
        auto one = StageFile(file.file, file.bytes, Fwrite);
        ASSERT_TRUE(one.ok());
        staged.push_back(*one);
        journal += one->staged.string() + "\t" + one->target.string() + "\n";
    }
    dir.Write(".journal", journal + "end\n");
    for (std::size_t i = 0; i < renamed; ++i) {
        ASSERT_TRUE(PutStagedInPlace(staged[i]).ok());
    }
}

TEST(FileJournal, FinishingAKilledSaveMakesEveryFileNew) {
    for (std::size_t renamed = 0; renamed <= kNames.size(); ++renamed) {
        TempDir dir;
        TempDir drive;
        WriteAll(dir, "old ");
        LeaveKilledSave(dir, renamed, drive.Path() / "Favorites");
        const auto finished = FinishJournal(dir.Path() / ".journal");
        ASSERT_TRUE(finished.ok()) << finished.reason();
        EXPECT_TRUE(*finished);
        const std::string when = "killed after " + std::to_string(renamed) + " renames";
        ExpectAll(dir, "new ", when);
        EXPECT_EQ(FolderNames(dir.Path()), kNames) << when;
        EXPECT_TRUE(std::filesystem::is_directory(drive.Path() / "Favorites")) << when;
        const auto again = FinishJournal(dir.Path() / ".journal");
        EXPECT_TRUE(again.ok() && !*again) << "a finished journal is gone";
    }
}

TEST(FileJournal, AJournalWithoutItsEndChangesNothing) {
    TempDir dir;
    WriteAll(dir, "old ");
    const auto staged = StageFile(dir.Path() / "user.reg", std::string("new user.reg"), Fwrite);
    ASSERT_TRUE(staged.ok());
    dir.Write(".journal",
              "Glyphmoor journal 1\n" + staged->staged.string() + "\t" + staged->target.string() + "\n");
    const auto finished = FinishJournal(dir.Path() / ".journal");
    ASSERT_TRUE(finished.ok());
    EXPECT_FALSE(*finished);
    ExpectAll(dir, "old ", "a torn journal");
    EXPECT_FALSE(std::filesystem::exists(dir.Path() / ".journal"));
}

constexpr std::string_view kSetting = "Software\\Glyphmoor Test";

constexpr std::string_view kMachineRoot = "\\\\Machine";
constexpr std::string_view kUserRoot = "\\\\User\\\\S-1-5-21-0-0-0-1000";

std::string BodyWith(std::string_view value) {
    return "\n[Software\\\\Glyphmoor Test] 1700000000\n\"v\"=\"" + std::string(value) + "\"\n";
}

std::string ReadSetting(MachineRegistry& registry, RootKey root) {
    RegHandle key = kNoHandle;
    RegValue value;
    if (registry.OpenKey(root, kSetting, RegAccess::Read, key) != kErrorSuccess ||
        registry.QueryValue(key, "v", value) != kErrorSuccess) {
        return "(none)";
    }
    std::string text;
    for (std::size_t i = 0; i + 2 < value.data.size(); i += 2) {
        text += static_cast<char>(value.data[i]);
    }
    return text;
}

TEST(FileJournal, LoadingAMachineFinishesTheSaveAKillInterrupted) {
    for (std::size_t renamed = 0; renamed <= 2; ++renamed) {
        TempMachine folder(BodyWith("old"), BodyWith("old"));
        const auto dir = MachineFolder::Open(folder.Dir());
        ASSERT_TRUE(dir.ok());
        const std::vector<FileReplacement> hives = {
            {dir->HiveFile(HiveId::Machine), HiveText(kMachineRoot, BodyWith("new"))},
            {dir->HiveFile(HiveId::User), HiveText(kUserRoot, BodyWith("new"))},
        };
        std::string journal = "Glyphmoor journal 1\n";
        std::vector<StagedFile> staged;
        for (const auto& hive : hives) {
            staged.push_back(*StageFile(hive.file, hive.bytes, Fwrite));
            journal += staged.back().staged.string() + "\t" + staged.back().target.string() + "\n";
        }
        folder.Folder().Write(dir->JournalFile().filename(), journal + "end\n");
        for (std::size_t i = 0; i < renamed; ++i) {
            ASSERT_TRUE(PutStagedInPlace(staged[i]).ok());
        }
        auto registry = MachineRegistry::Load(*dir);
        ASSERT_TRUE(registry.ok()) << registry.reason();
        EXPECT_EQ(ReadSetting(**registry, RootKey::LocalMachine), "new") << renamed;
        EXPECT_EQ(ReadSetting(**registry, RootKey::CurrentUser), "new") << renamed;
        EXPECT_FALSE(std::filesystem::exists(dir->JournalFile()));
    }
}

TEST(FileJournal, ASaveOfTwoHivesLeavesNoJournal) {
    TempMachine folder(BodyWith("old"), BodyWith("old"));
    const auto dir = MachineFolder::Open(folder.Dir());
    ASSERT_TRUE(dir.ok());
    auto registry = MachineRegistry::Load(*dir);
    ASSERT_TRUE(registry.ok());
    for (RootKey root : {RootKey::LocalMachine, RootKey::CurrentUser}) {
        RegHandle key = kNoHandle;
        ASSERT_EQ((*registry)->CreateKey(root, kSetting, key), kErrorSuccess);
        (*registry)->SetValue(key, "v", RegValue{kRegSz, {'n', 0, 'e', 0, 'w', 0, 0, 0}});
    }
    ASSERT_TRUE((*registry)->Save().ok());
    EXPECT_FALSE(std::filesystem::exists(dir->JournalFile()));
    auto reread = MachineRegistry::Load(*dir);
    ASSERT_TRUE(reread.ok());
    EXPECT_EQ(ReadSetting(**reread, RootKey::LocalMachine), "new");
    EXPECT_EQ(ReadSetting(**reread, RootKey::CurrentUser), "new");
}

}  // namespace
}  // namespace glyphmoor::test
