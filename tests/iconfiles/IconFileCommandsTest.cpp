// The command-line commands over icon files, run in-process.
#include "IconFixtures.h"

#include "cli/CliRun.h"
#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace glyphmoor {
namespace {

using Outcome = test::CliRun;

// Runs glyphmoor-cli COMMAND ARGS in-process.
Outcome Call(const std::string& command, std::vector<std::string> args) {
    args.insert(args.begin(), command);
    return test::RunCliCaptured(args);
}

class IconCommands : public ::testing::Test {
protected:
    void SetUp() override {
        dir = test::TestFolder();
        std::vector<cFileIcon> icons;
        icons.push_back(test::MakeIcon({{32, 4}, {16, 4}}));
        icons.push_back(test::MakeIcon({{48, 8}, {32, 8}}));
        test::WriteAll(dir + "/lib.dll", BuildResourceOnlyPe(IconLibraryResources(icons, {}), {}));
        test::WriteAll(dir + "/one.ico", icons[1].ToBytes());
    }
    std::string dir;
};

TEST_F(IconCommands, ResourcesListsTypesThenNames) {
    const Outcome run = Call("resources", {dir + "/lib.dll"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "3\tIcon\n14\tGroup Icon\n3\t1\n3\t2\n3\t3\n3\t4\n14\t1\n14\t2\n");
}

TEST_F(IconCommands, IconCount) {
    EXPECT_EQ(Call("icon-count", {dir + "/lib.dll"}).out, "2\n");
    EXPECT_EQ(Call("icon-count", {dir + "/one.ico"}).out, "1\n");
    EXPECT_NE(Call("icon-count", {dir + "/absent"}).status, 0);
}

// The second icon, by its index or (negative) by its resource id.
TEST_F(IconCommands, ExtractWritesTheIconFile) {
    for (const char* index : {"1", "-2"}) {
        std::filesystem::remove(dir + "/out.ico");
        const Outcome run = Call("extract", {dir + "/lib.dll", index, dir + "/out.ico"});
        ASSERT_EQ(run.status, 0) << index << ": " << run.err;
        EXPECT_EQ(test::ReadAll(dir + "/out.ico"), test::MakeIcon({{48, 8}, {32, 8}}).ToBytes()) << index;
    }
}

TEST_F(IconCommands, ExtractPngTakesTheImageForTheSize) {
    if (!PngSupported()) {
        const Outcome run = Call("extract", {dir + "/lib.dll", "0", dir + "/out.png"});
        EXPECT_NE(run.status, 0);
        EXPECT_NE(run.err.find("not in this build"), std::string::npos);
        return;
    }
    for (auto [size, expected] : {std::pair{"48", 48}, {"16", 32}, {"", 32}}) {
        std::vector<std::string> args = {dir + "/lib.dll", "-2", dir + "/out.png"};
        if (*size != '\0') {
            args.insert(args.begin(), {"--size", size});
        }
        const Outcome run = Call("extract", args);
        ASSERT_EQ(run.status, 0) << run.err;
        auto image = DecodePng(test::ReadAll(dir + "/out.png"));
        ASSERT_TRUE(image.ok()) << image.reason();
        EXPECT_EQ(image->width, expected) << size;
    }
}

TEST_F(IconCommands, ExtractRefusesWithAReason) {
    const std::vector<std::vector<std::string>> rows = {
        {dir + "/lib.dll", "5", dir + "/x.ico"},    // no icon 5 (the other reasons: IconOfFile)
        {dir + "/lib.dll", "one", dir + "/x.ico"},  // not a number
        {dir + "/lib.dll", "0", dir + "/x.bmp"},    // unknown output kind
        {dir + "/lib.dll", "0"},                    // missing OUT
        {dir + "/lib.dll", "0", dir + "/x.png", "--size", "0"},
    };
    for (const auto& args : rows) {
        const Outcome run = Call("extract", args);
        EXPECT_NE(run.status, 0) << args[1];
        EXPECT_FALSE(run.err.empty()) << args[1];
    }
    EXPECT_FALSE(std::filesystem::exists(dir + "/x.ico"));
}

TEST_F(IconCommands, ExtractAllWritesEveryGroup) {
    const Outcome run = Call("extract-all", {dir + "/lib.dll", dir + "/all"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(test::ReadAll(dir + "/all/lib.dll_0.ico"), test::MakeIcon({{32, 4}, {16, 4}}).ToBytes());
    EXPECT_EQ(test::ReadAll(dir + "/all/lib.dll_1.ico"), test::MakeIcon({{48, 8}, {32, 8}}).ToBytes());
    EXPECT_FALSE(std::filesystem::exists(dir + "/all/lib.dll_2.ico"));

    ASSERT_EQ(Call("extract-all", {dir + "/one.ico", dir + "/all"}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(dir + "/all/one.ico_0.ico"));

    test::WriteAll(dir + "/bad.dll", test::Bytes(64, std::byte{'M'}));
    const Outcome bad = Call("extract-all", {dir + "/bad.dll", dir + "/all"});
    EXPECT_NE(bad.status, 0);
    EXPECT_NE(bad.err.find("bad.dll"), std::string::npos);
}

TEST_F(IconCommands, ExtractAllOfADamagedLibraryWritesNothing) {
    std::vector<cFileIcon> icons;
    for (int i = 0; i < 4; ++i) {
        icons.push_back(test::MakeIcon({{32, 4}}));
    }
    auto resources = IconLibraryResources(icons, {});
    // One image is gone: its group cannot be read, the other three can.
    const auto image = std::find_if(resources.rbegin(), resources.rend(),
                                    [](const RawResource& r) { return r.type == ResourceId::Number(3); });
    ASSERT_NE(image, resources.rend());
    resources.erase(std::next(image).base());
    test::WriteAll(dir + "/cut.dll", BuildResourceOnlyPe(resources, {}));

    const Outcome run = Call("extract-all", {dir + "/cut.dll", dir + "/all"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("no file was written"), std::string::npos) << run.err;
    EXPECT_TRUE(std::filesystem::is_empty(dir + "/all"));
}

}  // namespace
}  // namespace glyphmoor
