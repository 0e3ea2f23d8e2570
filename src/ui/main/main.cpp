// glyphmoor: the window. The command line is the program's own ("/a FILE",
// "/t FILE", "/f FOLDER"), optionally after --machine DIR.
#include "ui/main/Main.h"
#include "foundation/Machine.h"
#include "foundation/Startup.h"

#include <QApplication>

#include <cstdlib>
#include <iostream>
#include <string>
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
        } else {
            words.push_back(word);
        }
    }
    const glyphmoor::StartRequest request = glyphmoor::ParseCommandLine(glyphmoor::JoinCommandLine(words));
    if (request.mode == glyphmoor::StartMode::ApplyTheme) {
        std::cerr << "glyphmoor: applying a theme with /a is not part of this build yet\n";
        return EXIT_FAILURE;
    }
    if (!HasDisplay()) {
        std::cerr
            << "glyphmoor: there is no display to show the window on (neither DISPLAY nor WAYLAND_DISPLAY "
               "is set).\n"
               "Without a display, work with the command line: \"glyphmoor-cli help\" (or \"scripts/run cli "
               "help\")\n"
               "lists its commands: icons, icons set, icons restore, icons rename, icons restore-all, reg, "
               "...\n"
               "Once themes are part of this build, \"glyphmoor /a THEME\" applies a theme without a "
               "window.\n"
               "To run the window without a screen, set QT_QPA_PLATFORM=offscreen.\n";
        return EXIT_FAILURE;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Glyphmoor"));
    auto machine = machineDir ? glyphmoor::OpenMachineFolder(*machineDir) : glyphmoor::OpenHomeMachine();
    if (!machine.ok()) {
        std::cerr << "glyphmoor: " << machine.reason() << '\n';
        return EXIT_FAILURE;
    }
    glyphmoor::Main window(**machine, request);
    window.show();
    return QApplication::exec();
}
