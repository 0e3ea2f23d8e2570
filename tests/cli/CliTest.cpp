// The runner of glyphmoor-cli: help, version, and the arity each command's
// table row declares, checked before any machine is opened.
#include "CliRun.h"

#include "foundation/Version.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

TEST(Cli, HelpAndVersion) {
    const CliRun list = RunCliCaptured({"help"});
    const struct {
        std::vector<std::string> args;
        int status;
        std::string out;  // the start of the output; empty: none at all
        std::string err;  // a part of the error stream; empty: nothing there
    } cases[] = {
        {{"--help"}, kExitOk, list.out, ""},
        {{"-h"}, kExitOk, list.out, ""},
        {{}, kExitUsage, list.out, ""},
        {{"--version"}, kExitOk, "glyphmoor-cli " + std::string(ProgramVersion()) + "\n", ""},
        {{"help", "reg", "read"},
         kExitOk,
         "usage: glyphmoor-cli reg read PATH NAME\n\nprints the value's text",
         ""},
        {{"--help", "icons"}, kExitOk, "usage: glyphmoor-cli icons [--group N]\n", ""},
        {{"help", "icons", "set"}, kExitOk, "usage: glyphmoor-cli icons set GROUP NAME LOCATION\n", ""},
        {{"help", "frobnicate"}, kExitUsage, "", "unknown command 'frobnicate'"},
        {{"help", "reg", "read", "x"}, kExitUsage, "", "unknown command 'reg read'"},
    };
    EXPECT_EQ(list.status, kExitOk);
    for (const auto& c : cases) {
        const CliRun run = RunCliCaptured(c.args);
        const std::string what = c.args.empty() ? "(nothing)" : c.args.back();
        EXPECT_EQ(run.status, c.status) << what;
        EXPECT_EQ(run.out.substr(0, c.out.size()), c.out) << what;
        EXPECT_EQ(run.out.empty(), c.out.empty()) << what;
        EXPECT_NE(run.err.find(c.err), std::string::npos) << what << ": " << run.err;
        EXPECT_EQ(run.err.empty(), c.err.empty()) << what;
    }
    for (const char* text : {"--machine DIR", "--version", "help [COMMAND]"}) {
        EXPECT_NE(list.out.find(text), std::string::npos) << text;
    }
}

// Every command: listed, with help of its own, and a wrong number of words is
// refused with its usage line before the machine (which cannot be opened) is.
TEST(Cli, EveryCommandChecksItsArityFirst) {
    const CliRun list = RunCliCaptured({"help"});
    for (const CliCommand& command : CliCommands()) {
        const std::string name(command.name);
        EXPECT_NE(list.out.find("  " + name), std::string::npos) << name;
        EXPECT_FALSE(command.summary.empty()) << name;
        ASSERT_LE(command.minArgs, command.maxArgs) << name;
        std::vector<std::string> words{"--machine", "/nonexistent/machine", "help"};
        for (std::size_t from = 0, space = 0; space != std::string::npos; from = space + 1) {
            space = name.find(' ', from);
            words.push_back(name.substr(from, space - from));
        }
        EXPECT_EQ(RunCliCaptured(words).status, kExitOk) << name;
        words.erase(words.begin() + 2);
        words.insert(words.end(), command.maxArgs + 1, "x");
        const CliRun run = RunCliCaptured(words);
        EXPECT_EQ(run.status, kExitUsage) << name;
        EXPECT_EQ(run.err.rfind("usage: glyphmoor-cli " + name + " ", 0), 0U) << name << ": " << run.err;
    }
}

}  // namespace
}  // namespace glyphmoor::test
