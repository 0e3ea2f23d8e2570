#include "cli/IconCommands.h"

#include "foundation/AppEnvironment.h"

#include <array>
#include <charconv>
#include <optional>

namespace glyphmoor {

namespace {

int Icons(CliContext& c, CommandArgs a);

constexpr std::array<CliCommand, 1> kCommands = {{
    {"icons", "[--group N]",
     "prints the icon catalogue, an entry a line: group, display name, catalogue name, current file, "
     "current index, default file, default index",
     Icons},
}};

// The group number of "--group N", 1 to 7.
std::optional<int> ParseGroup(std::string_view text) {
    int number = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (ec != std::errc() || end != text.data() + text.size() || number < 1 || number > kIconGroupCount) {
        return std::nullopt;
    }
    return number;
}

int Icons(CliContext& c, CommandArgs a) {
    std::optional<int> only;
    if (a.size() == 2 && a[0] == "--group") {
        only = ParseGroup(a[1]);
        if (!only) {
            c.err << "glyphmoor-cli: --group takes a group number from 1 to " << kIconGroupCount << '\n';
            return UsageError(c, kCommands[0]);
        }
    } else if (!a.empty()) {
        return UsageError(c, kCommands[0]);
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    const AppEnvironment app = InitEnvironment(machine->Env());
    IconCatalogue catalogue(machine->Registry(), app);
    const bool wantIcons = !only || *only != static_cast<int>(GroupNumber::Cursors);
    const bool wantCursors = !only || *only == static_cast<int>(GroupNumber::Cursors);
    catalogue.DetectShellIcons(!wantIcons);
    if (wantCursors) {
        catalogue.BuildCursorCatalogue();
    }
    for (int number = 1; number <= kIconGroupCount; ++number) {
        if (!only || *only == number) {
            PrintIconGroup(c.out, catalogue.Group(number));
        }
    }
    return kExitOk;
}

}  // namespace

std::span<const CliCommand> IconCommands() {
    return kCommands;
}

void PrintIconGroup(std::ostream& out, const IconGroup& group) {
    for (const SystemIconEntry& e : group.Entries()) {
        out << group.Number() << '\t' << e.displayName << '\t' << e.catalogueName << '\t' << e.currentFile
            << '\t' << e.currentIndex << '\t' << e.defaultFile << '\t' << e.defaultIndex << '\n';
    }
}

}  // namespace glyphmoor
