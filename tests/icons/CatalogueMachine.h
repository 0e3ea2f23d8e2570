// Small machine folders of the three flavours, with or without the
// desktop-update shell, for the catalogue's tests.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/Machine.h"
#include "icons/IconCatalogue.h"
#include "support/TempMachine.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor::test {

enum class Flavour { Win95, Win98, WinNT };
enum class Shell { Old, NewIe471, NewIe4 };

const char* FlavourName(Flavour flavour);
const char* ShellName(Shell shell);

class CatalogueMachine {
public:
    explicit CatalogueMachine(Flavour flavour, Shell shell = Shell::Old);

    RegistryStore& Registry() { return m_machine->Registry(); }
    const AppEnvironment& App() const { return m_app; }

    void Set(std::string_view path, std::string_view name, std::string_view text);
    void Key(std::string_view path);
    // Registers an extension with a class ("HKEY_CLASSES_ROOT\.txt" = txtfile).
    void FileClass(std::string_view extension, std::string_view className);
    // The ShellFolder keys of Internet Explorer's folders (Favorites, Url
    // History, ActiveX Cache, Subscriptions, Scheduled Tasks).
    void WebFolders();

    // A catalogue of this machine with every group built, the pointers too.
    IconCatalogue Build();

private:
    TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
};

// "display|catalogue name|current file,index|default file,index"
std::string Describe(const SystemIconEntry& entry);
std::vector<std::string> Keys(const IconGroup& group);

}  // namespace glyphmoor::test
