// rebuild-icons: wired to the icon-cache rebuild, its lever printed and the
// size kept; refused where the rebuild is, with nothing written. The rebuild's
// own cases are the icons tests'.
#include "CliRun.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

constexpr const char* kMetrics = "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics";

TEST(RebuildCommands, PrintsTheLeverAndKeepsTheSizeOrSaysWhyNot) {
    const std::string write = std::string("write\t") + kMetrics + "\tShell Icon Size\t";
    const std::string send = "send\tWM_SETTINGCHANGE 0x2e 0\n";
    const struct {
        const char* name;
        std::string system;
        std::string user;
        int status;
        std::string out;
        std::string err;
        std::string size;  // "Shell Icon Size" afterwards
    } cases[] = {
        {"size 48", Win98System(),
         "\n[Control Panel\\\\desktop\\\\WindowMetrics] 0\n\"Shell Icon Size\"=\"48\"\n", 0,
         write + "49\n" + send + write + "48\n" + send, "", "48"},
        {"NT 4 with IE 4's desktop shell",
         WinNtSystem() + "\n[Software\\\\Microsoft\\\\Internet Explorer] 0\n\"Version\"=\"4.72.3110.0\"\n",
         "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\MenuOrder\\\\Start Menu] 0\n",
         1, "",
         "glyphmoor-cli: the icon cache was not rebuilt: Glyphmoor has detected that you are using Windows "
         "NT "
         "4.0 with Internet Explorer 4.0 Active Desktop installed.\n",
         "Error"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TempMachine machine(c.system, c.user);
        const CliRun run = Cli(machine, {"rebuild-icons"});
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, c.out);
        EXPECT_EQ(run.err, c.err);
        const auto reopened = machine.Open();
        EXPECT_EQ(GetRegString(reopened->Registry(), kMetrics, "Shell Icon Size"), c.size);
        // No notice is shown, so none is silenced.
        EXPECT_EQ(GetRegDword(reopened->Registry(),
                              "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Dialog Rebuild"),
                  kRegDwordUnreadable);
    }
}

}  // namespace
}  // namespace glyphmoor::test
