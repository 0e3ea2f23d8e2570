// Tweaks on a fresh Wine prefix made by wineboot (GLYPHMOOR_TEST_PREFIX),
// through the command line: the listing shows Wine's own values, a change
// writes only what changed, and restoring puts back exactly what Wine had.
#include "cli/Cli.h"
#include "foundation/Baseline.h"
#include "foundation/Machine.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using Values = std::map<std::string, RegValue>;

int RunOn(const fs::path& dir, std::vector<std::string> args, std::string* out = nullptr) {
    args.insert(args.begin(), {"--machine", dir.string()});
    std::ostringstream output;
    std::ostringstream errors;
    const int status = RunCli(args, output, errors);
    EXPECT_EQ(errors.str(), "");
    if (out != nullptr) {
        *out = output.str();
    }
    return status;
}

// Every value of the keys the Desktop, Mouse and Sound items live in.
Values Settings(const fs::path& dir) {
    auto machine = OpenMachineFolder(dir);
    EXPECT_TRUE(machine.ok());
    Values values;
    for (const char* key :
         {"HKEY_CURRENT_USER\\Control Panel\\Desktop", "HKEY_CURRENT_USER\\Control Panel\\Mouse",
          "HKEY_CURRENT_USER\\Control Panel\\Sound"}) {
        std::vector<std::pair<std::string, RegValue>> found;
        EnumRegRawValues((*machine)->Registry(), key, found);
        for (auto& [name, value] : found) {
            values[std::string(key) + "|" + name] = value;
        }
    }
    return values;
}

TEST(TweaksOnAWinePrefix, ChangesOnlyWhatIsSetAndRestoresWhatWineHad) {
    const char* prefix = std::getenv("GLYPHMOOR_TEST_PREFIX");
    if (prefix == nullptr || !fs::exists(fs::path(prefix) / "system.reg")) {
        GTEST_SKIP() << "no Wine prefix to try (GLYPHMOOR_TEST_PREFIX)";
    }
    TempDir copy;
    const fs::path dir = copy.Path() / "prefix";
    fs::copy(prefix, dir, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    const Values pristine = Settings(dir);
    const std::string dragWidth = "HKEY_CURRENT_USER\\Control Panel\\Desktop|DragWidth";
    ASSERT_TRUE(pristine.contains(dragWidth));

    std::string listing;
    ASSERT_EQ(RunOn(dir, {"tweaks"}, &listing), 0);
    EXPECT_NE(listing.find("group\t\tDisplay\tDisplay\t\n"), std::string::npos);  // Wine reports Windows NT
    EXPECT_NE(listing.find("value\tDrag\tDrag Width\tWidth\t" + RegValueText(pristine.at(dragWidth)) + "\n"),
              std::string::npos);

    ASSERT_EQ(RunOn(dir, {"tweaks", "set", "Smooth Scrolling=on", "Drag Width=9"}), 0);
    Values changed = Settings(dir);
    EXPECT_EQ(RegValueText(changed.at(dragWidth)), "9");
    changed.erase(dragWidth);
    ASSERT_EQ(changed.erase("HKEY_CURRENT_USER\\Control Panel\\Desktop|SmoothScroll"), 1U);
    Values others = pristine;
    others.erase(dragWidth);
    EXPECT_EQ(changed, others);

    ASSERT_EQ(RunOn(dir, {"tweaks", "restore-defaults", "--yes"}), 0);
    EXPECT_EQ(Settings(dir), pristine);
}

}  // namespace
}  // namespace glyphmoor::test
