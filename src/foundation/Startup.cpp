#include "foundation/Startup.h"

#include "foundation/modFunctions.h"
#include "foundation/modRegistry.h"

namespace glyphmoor {

namespace {}  // namespace

StartRequest ParseCommandLine(std::string_view commandLine) {
    StartRequest request;
    if (commandLine.empty()) {
        return request;
    }
    const std::string_view switchText = commandLine.substr(0, 2);
    request.argument = std::string(commandLine.size() > 3 ? commandLine.substr(3) : std::string_view{});
    if (switchText == "/a") {
        request.mode = StartMode::ApplyTheme;
        request.firstPage = Page::None;
    } else if (switchText == "/t") {
        request.mode = StartMode::PreviewTheme;
        request.firstPage = Page::IconsAndCursors;
    } else if (switchText == "/f") {
        request.mode = StartMode::OpenFolder;
        request.firstPage = Page::Folders;
    } else {
        request.mode = StartMode::Unknown;
        request.firstPage = Page::None;
        request.argument.clear();
    }
    return request;
}

std::string JoinCommandLine(const std::vector<std::string>& words) {
    std::string line;
    for (const auto& word : words) {
        if (!line.empty()) {
            line += ' ';
        }
        line += word;
    }
    return line;
}

WindowPosition StartPosition(RegistryStore& registry, int screenWidth, int screenHeight, int windowWidth,
                             int windowHeight) {
    if (GetRegDword(registry, kSettingsPath, "Positions") == 1) {
        return {LeadingNumber(GetRegString(registry, kSettingsPath, "Left")),
                LeadingNumber(GetRegString(registry, kSettingsPath, "Top"))};
    }
    return {(screenWidth - windowWidth) / 2, (screenHeight - windowHeight) / 2};
}

void SaveWindowPosition(RegistryStore& registry, WindowPosition position) {
    SetRegString(registry, kSettingsPath, "Left", std::to_string(position.left));
    SetRegString(registry, kSettingsPath, "Top", std::to_string(position.top));
}

std::int32_t ReadActiveTab(RegistryStore& registry) {
    return GetRegDword(registry, kSettingsPath, "Active Tab");
}

void WriteActiveTab(RegistryStore& registry, std::int32_t page) {
    SetRegDword(registry, kSettingsPath, "Active Tab", page);
}

bool AsksBeforeClosing(const AppState& state) {
    return state.applyEnabled;
}

CloseAction CloseActionFor(const AppState& state, std::optional<int> answer) {
    if (!AsksBeforeClosing(state)) {
        return CloseAction::Close;
    }
    switch (answer.value_or(0)) {
        case 1:
            return CloseAction::Close;
        case 2:
            return CloseAction::ApplyThenClose;
        default:
            return CloseAction::Cancel;
    }
}

UnloadResult Unload(RegistryStore& registry, const AppState& state, WindowPosition position) {
    UnloadResult result;
    result.showNextStartNotice = state.restartPending;
    result.activeTab = ReadActiveTab(registry);
    SaveWindowPosition(registry, position);
    return result;
}

}  // namespace glyphmoor
