#include "foundation/System.h"

#include <cstdio>

namespace glyphmoor {

namespace {

std::string Hex(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", value);
    return text;
}

}  // namespace

std::string DescribeSettingChange(std::uint32_t wParam, const std::optional<std::string>& section) {
    return "WM_SETTINGCHANGE " + Hex(wParam) + " " + (section ? "\"" + *section + "\"" : "0");
}

void RecordingSystem::BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) {
    m_calls.push_back(DescribeSettingChange(wParam, section));
}

bool RecordingSystem::SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam,
                                           const SpiParam& pvParam, std::uint32_t winIni) {
    std::string param = "null";
    if (const auto* number = std::get_if<std::uint32_t>(&pvParam)) {
        param = std::to_string(*number);
    } else if (const auto* text = std::get_if<std::string>(&pvParam)) {
        param = "\"" + *text + "\"";
    } else if (const auto* animation = std::get_if<AnimationInfo>(&pvParam)) {
        param = "{" + std::to_string(animation->size) + ", " + std::to_string(animation->minAnimate) + "}";
    }
    m_calls.push_back("SystemParametersInfo " + Hex(action) + " " + std::to_string(uiParam) + " " + param +
                      " " + std::to_string(winIni));
    return true;
}

void RecordingSystem::EnableShutdownPrivilege() {
    m_calls.emplace_back("EnableShutdownPrivilege");
}

void RecordingSystem::ExitWindows(std::uint32_t flags, std::uint32_t reserved) {
    m_calls.push_back("ExitWindowsEx " + Hex(flags) + " " + Hex(reserved));
}

bool RecordingSystem::OpenDocument(std::string_view pathOrAddress) {
    m_calls.push_back("Open \"" + std::string(pathOrAddress) + "\"");
    return !m_opensDocuments || OpenWithDesktop(pathOrAddress);
}

void RecordingSystem::RunProgram(std::string_view commandLine, int showCommand) {
    m_calls.push_back("WinExec \"" + std::string(commandLine) + "\" " + std::to_string(showCommand));
}

void RecordingSystem::ShellExecuteVerb(std::string_view verb, std::string_view file,
                                       std::string_view parameters, int showCommand) {
    m_calls.push_back("ShellExecute \"" + std::string(verb) + "\" \"" + std::string(file) + "\" \"" +
                      std::string(parameters) + "\" " + std::to_string(showCommand));
}

void RecordingSystem::OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) {
    m_calls.push_back("WinHelp \"" + std::string(helpFile) + "\" " + Hex(command) + " \"" +
                      std::string(data) + "\"");
}

}  // namespace glyphmoor
