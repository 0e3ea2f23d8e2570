#include "ui/main/OpenMachine.h"

#include <QMessageBox>

#include <iostream>

namespace glyphmoor {

std::unique_ptr<Machine> OpenWindowMachine(const std::optional<std::string>& dir,
                                           const std::function<void(const QString&)>& tell) {
    auto machine = dir ? OpenMachineFolder(*dir) : OpenHomeMachine();
    if (machine.ok()) {
        return std::move(*machine);
    }
    std::cerr << "glyphmoor: " << machine.reason() << '\n';
    tell(QStringLiteral("Glyphmoor cannot open the machine to work on:\n\n") +
         QString::fromStdString(machine.reason()));
    return nullptr;
}

void ShowMachineFailure(const QString& text) {
    QMessageBox::critical(nullptr, QStringLiteral("Glyphmoor"), text);
}

}  // namespace glyphmoor
