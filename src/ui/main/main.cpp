// glyphmoor: the window. The command line is the program's own ("/a FILE",
// "/t FILE", "/f FOLDER"), optionally after --machine DIR.
#include "ui/main/Main.h"
#include "foundation/Machine.h"
#include "foundation/Startup.h"
#include "foundation/Version.h"
#include "themes/ThemeApply.h"
#include "ui/main/OpenMachine.h"

#include <QApplication>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Whether Qt will find a display to show the window on.
bool HasDisplay() {
#if defined(_WIN32) || defined(__APPLE__)
    return true;
#else
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return true;
        }
    }
    return false;
#endif
}

constexpr std::string_view kWindowHelp =
    "usage: glyphmoor [--machine DIR] [/a FILE | /t FILE | /f FOLDER]\n\n"
    "Opens Glyphmoor's window on the built-in default machine (a Windows 98 machine\n"
    "folder in the user's data folder), or on the machine folder DIR, any Wine prefix.\n\n"
    "  /a FILE        applies the theme FILE (a Windows path) without a window\n"
    "  /t FILE        opens on the \"Icons & Cursors\" page with the theme FILE\n"
    "  /f FOLDER      opens on the \"Folders\" page at FOLDER\n"
    "  --machine DIR  works on the machine folder DIR\n"
    "  --help, -h     prints this text\n"
    "  --version      prints the program's version\n\n"
    "Exactly one blank separates /t or /f from its argument. glyphmoor-cli does the\n"
    "same work from the command line: \"glyphmoor-cli help\" lists its commands.\n";

// "/a FILE": the theme applied without a window, questions answered as the
// silent prompt answers them; status 0 when it was applied.
int ApplyWithoutWindow(const std::optional<std::string>& machineDir, const std::string& theme) {
    auto machine = machineDir ? glyphmoor::OpenMachineFolder(*machineDir) : glyphmoor::OpenHomeMachine();
    if (!machine.ok()) {
        std::cerr << "glyphmoor: " << machine.reason() << '\n';
        return EXIT_FAILURE;
    }
    const auto applied = glyphmoor::ApplyThemeFile(**machine, theme);
    if (!applied.ok()) {
        std::cerr << "glyphmoor: " << applied.reason() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words;
    std::optional<std::string> machineDir;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--machine" && i + 1 < argc) {
            machineDir = argv[++i];
        } else if (word.starts_with("--machine=")) {
            machineDir = word.substr(10);
        } else if (word == "--help" || word == "-h") {
            std::cout << kWindowHelp;
            return EXIT_SUCCESS;
        } else if (word == "--version") {
            std::cout << "glyphmoor " << glyphmoor::ProgramVersion() << '\n';
            return EXIT_SUCCESS;
        } else {
            words.push_back(word);
        }
    }
    const glyphmoor::StartRequest request = glyphmoor::ParseCommandLine(glyphmoor::JoinCommandLine(words));
    if (request.mode == glyphmoor::StartMode::ApplyTheme) {
        return ApplyWithoutWindow(machineDir, request.argument);
    }
    if (!HasDisplay()) {
        std::cerr
            << "glyphmoor: there is no display to show the window on (neither DISPLAY nor WAYLAND_DISPLAY "
               "is set).\n"
               "Without a display, work with the command line: \"glyphmoor-cli help\" (or \"scripts/run cli "
               "help\")\n"
               "lists its commands: icons, icons set, icons restore, icons rename, icons restore-all, reg, "
               "...\n"
               "\"glyphmoor /a THEME\" applies a theme without a window.\n"
               "To run the window without a screen, set QT_QPA_PLATFORM=offscreen.\n";
        return EXIT_FAILURE;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Glyphmoor"));
    const auto machine = glyphmoor::OpenWindowMachine(machineDir, glyphmoor::ShowMachineFailure);
    if (machine == nullptr) {
        return EXIT_FAILURE;
    }
    glyphmoor::Main window(*machine, request);
    window.show();
    return QApplication::exec();
}
