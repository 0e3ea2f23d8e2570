// Folder items by Windows path, the way between them, and the folder listing.
#include "folders/FolderItem.h"
#include "folders/FolderListing.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

TEST(FolderItem, PathsNameDrivesAndFolders) {
    // The item's path, or "" when the path names none.
    struct Case {
        std::string given;
        std::string path;
        FolderItemKind kind = FolderItemKind::Folder;
    };
    const std::vector<Case> cases = {
        {"c:", "C:\\", FolderItemKind::Drive},
        {"C:\\", "C:\\", FolderItemKind::Drive},
        {"d:/", "D:\\", FolderItemKind::Drive},
        {"C:\\\\", "C:\\", FolderItemKind::Drive},
        {"c:\\Windows\\", "C:\\Windows"},
        {"C:/My Documents/Work", "C:\\My Documents\\Work"},
        {"C:\\a\\\\b\\", "C:\\a\\b"},
        {"C:Windows", ""},
        {"Windows", ""},
        {"\\\\server\\share", ""},
        {"", ""},
    };
    for (const Case& c : cases) {
        const auto item = FolderItemOf(c.given);
        if (c.path.empty()) {
            EXPECT_FALSE(item.has_value()) << c.given;
            continue;
        }
        ASSERT_TRUE(item.has_value()) << c.given;
        EXPECT_EQ(item->path, c.path) << c.given;
        EXPECT_EQ(item->kind, c.kind) << c.given;
    }
}

TEST(FolderItem, ParentsChildrenAndIconFiles) {
    // The parent's path is "" for a drive, which lies in nothing.
    struct Case {
        std::string path;
        FolderItemKind kind = FolderItemKind::Folder;
        std::string parent;
        std::string iconFile;
        std::vector<std::string> fromRoot;
    };
    const std::vector<Case> cases = {
        {"C:\\", FolderItemKind::Drive, "", "C:\\autorun.inf", {"C:\\"}},
        {"D:\\Games", FolderItemKind::Folder, "D:\\", "D:\\Games\\desktop.ini", {"D:\\", "D:\\Games"}},
        {"C:\\WINDOWS\\SYSTEM",
         FolderItemKind::Folder,
         "C:\\WINDOWS",
         "C:\\WINDOWS\\SYSTEM\\desktop.ini",
         {"C:\\", "C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM"}},
    };
    for (const Case& c : cases) {
        const FolderItem item{c.path, c.kind};
        const auto parent = ParentOf(item);
        EXPECT_EQ(parent ? parent->path : std::string(), c.parent) << c.path;
        EXPECT_EQ(IconFileOf(item), c.iconFile);
        std::vector<std::string> fromRoot;
        for (const FolderItem& step : PathFromRoot(item)) {
            fromRoot.push_back(step.path);
        }
        EXPECT_EQ(fromRoot, c.fromRoot);
    }
    EXPECT_EQ(ChildOf({"C:\\", FolderItemKind::Drive}, "WINDOWS"),
              (FolderItem{"C:\\WINDOWS", FolderItemKind::Folder}));
    EXPECT_EQ(ChildOf({"C:\\WINDOWS", FolderItemKind::Folder}, "Fonts").path, "C:\\WINDOWS\\Fonts");
}

TEST(FolderListing, SubfoldersWithoutCaseFilesLeftOut) {
    TempDir dir;
    for (const char* name : {"beta", "Alpha", "gamma", "_under", "Beta2"}) {
        fs::create_directory(dir.Path() / name);
    }
    dir.Write("delta.txt", "not a folder");
    const auto names = ListSubfolders(dir.Path());
    ASSERT_TRUE(names.ok()) << names.reason();
    EXPECT_EQ(*names, (std::vector<std::string>{"_under", "Alpha", "beta", "Beta2", "gamma"}));
}

TEST(FolderListing, WhatCannotBeListedFailsWithTheReason) {
    TempDir dir;
    dir.Write("file.txt", "x");
    for (const fs::path& path : {dir.Path() / "file.txt", dir.Path() / "missing"}) {
        const auto names = ListSubfolders(path);
        ASSERT_FALSE(names.ok()) << path;
        EXPECT_NE(names.reason().find(path.string()), std::string::npos) << names.reason();
    }
}

TEST(FolderListing, NearestExistingFolder) {
    TempMachine machine;
    const auto opened = machine.Open();
    ASSERT_TRUE(opened);
    const Environment& env = opened->Env();
    fs::create_directories(env.HostPath("C:\\WINDOWS\\SYSTEM"));
    struct Case {
        const char* asked;
        const char* nearest;
    };
    const std::vector<Case> cases = {
        {"C:\\WINDOWS\\SYSTEM", "C:\\WINDOWS\\SYSTEM"},
        {"c:\\windows\\system\\nope\\deeper", "C:\\windows\\system"},
        {"C:\\Nowhere", "C:\\"},
        {"C:\\", "C:\\"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(NearestExistingItem(env, *FolderItemOf(c.asked)).path, c.nearest) << c.asked;
    }
}

}  // namespace
}  // namespace glyphmoor::test
