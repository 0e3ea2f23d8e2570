#include "icons/CatalogueMachine.h"

#include "foundation/modRegistry.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {

namespace {

std::string SystemBody(Flavour flavour) {
    switch (flavour) {
        case Flavour::Win95:
            return "\n[Software\\\\Classes] 1700000000\n"
                   "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
                   "\"SystemRoot\"=\"C:\\\\WINDOWS\"\n"
                   "\"VersionNumber\"=\"4.00.950\"\n";
        case Flavour::Win98:
            return Win98System();
        case Flavour::WinNT:
            return WinNtSystem();
    }
    return {};
}

}  // namespace

const char* FlavourName(Flavour flavour) {
    switch (flavour) {
        case Flavour::Win95:
            return "Win95";
        case Flavour::Win98:
            return "Win98";
        case Flavour::WinNT:
            return "WinNT";
    }
    return "";
}

const char* ShellName(Shell shell) {
    switch (shell) {
        case Shell::Old:
            return "old shell";
        case Shell::NewIe471:
            return "desktop update, IE 4.71";
        case Shell::NewIe4:
            return "desktop update, IE 4.72";
    }
    return "";
}

CatalogueMachine::CatalogueMachine(Flavour flavour, Shell shell) : m_folder(SystemBody(flavour)) {
    m_machine = m_folder.Open();
    if (!m_machine) {
        throw std::runtime_error("machine folder did not open");
    }
    m_app = InitEnvironment(m_machine->Env());
    if (shell != Shell::Old) {
        Key(kStartMenuOrderPath);
        Set(kInternetExplorerPath, "Version", shell == Shell::NewIe471 ? "4.71.1712.6" : "4.72.3110.8");
    }
}

void CatalogueMachine::Set(std::string_view path, std::string_view name, std::string_view text) {
    SetRegString(Registry(), path, name, text);
}

void CatalogueMachine::Key(std::string_view path) {
    CreateRegKey(Registry(), path);
}

void CatalogueMachine::FileClass(std::string_view extension, std::string_view className) {
    Set("HKEY_CLASSES_ROOT\\" + std::string(extension), "", className);
}

void CatalogueMachine::WebFolders() {
    for (const char* clsid :
         {"{1A9BA3A0-143A-11CF-8350-444553540000}", "{FF393560-C2A7-11CF-BFF4-444553540000}",
          "{88C6C381-2E85-11D0-94DE-444553540000}", "{F5175861-2688-11d0-9C5E-00AA00A45957}",
          "{D6277990-4C6A-11CF-8D87-00AA0060F5BF}"}) {
        Set("HKEY_CLASSES_ROOT\\CLSID\\" + std::string(clsid) + "\\ShellFolder", "", "");
    }
}

IconCatalogue CatalogueMachine::Build() {
    IconCatalogue catalogue(Registry(), m_app);
    catalogue.DetectShellIcons();
    catalogue.BuildCursorCatalogue();
    return catalogue;
}

std::string Describe(const SystemIconEntry& e) {
    return e.displayName + "|" + e.catalogueName + "|" + e.Current().Text() + "|" + e.Default().Text();
}

std::vector<std::string> Keys(const IconGroup& group) {
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < group.Count(); ++i) {
        keys.emplace_back(group.KeyAt(i));
    }
    return keys;
}

}  // namespace glyphmoor::test
