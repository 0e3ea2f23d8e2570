// What the window tests share: a fresh default machine in a folder of its
// own, the main window on it shown offscreen with a scripted prompt for its
// messages, and the machine read back from its files.
#pragma once

#include "DialogSteps.h"
#include "foundation/DefaultMachine.h"
#include "foundation/modRegistry.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"
#include "ui/main/Main.h"

#include <QPushButton>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace glyphmoor::test {

class WindowFixture : public QObject {
protected:
    std::unique_ptr<TempDir> m_dir;
    std::unique_ptr<Machine> m_machine;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    std::unique_ptr<Main> m_window;

    // A fresh default machine and its prompt; no window yet.
    void MakeMachine() {
        m_dir = std::make_unique<TempDir>();
        QVERIFY(EnsureSeededMachine(MachineDir(), SeedDirs()).ok());
        auto machine = OpenMachineFolder(MachineDir());
        QVERIFY(machine.ok());
        m_machine = std::move(*machine);
        m_prompt = std::make_unique<ScriptedPrompt>(m_machine->Sys(), "Glyphmoor.hlp");
    }
    // A new window on the machine, in place of any earlier one, shown.
    void OpenWindow(const StartRequest& request = {}) {
        m_window.reset();
        m_window = std::make_unique<Main>(*m_machine, request, m_prompt.get());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void CloseAll() {
        m_prompt->Answer({PromptAnswer::Press(1)});  // "No" to the close question
        m_window.reset();
        m_machine.reset();
        m_dir.reset();
    }

    [[nodiscard]] std::filesystem::path MachineDir() const { return m_dir->Path() / "machine"; }
    [[nodiscard]] std::filesystem::path Host(std::string_view windowsPath) const {
        return m_machine->Env().HostPath(windowsPath);
    }
    // A value as the machine's files hold it now.
    std::string Stored(std::string_view path, std::string_view name) {
        auto machine = OpenMachineFolder(MachineDir());
        return machine.ok() ? GetRegString((*machine)->Registry(), path, name) : "no machine";
    }
    template <typename T = QWidget>
    T* Control(const char* name) {
        return m_window->findChild<T*>(QString::fromUtf8(name));
    }
    // Clicks Apply, which then has nothing left to apply.
    void Apply() {
        QVERIFY(Control<QPushButton>("cmdApply")->isEnabled());
        QTest::mouseClick(Control<QPushButton>("cmdApply"), Qt::LeftButton);
        QVERIFY(!Control<QPushButton>("cmdApply")->isEnabled());
    }
};

}  // namespace glyphmoor::test
