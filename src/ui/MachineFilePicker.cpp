#include "ui/MachineFilePicker.h"

#include <QFileDialog>

namespace glyphmoor {

std::optional<std::string> PickMachineFile(QWidget* parent, const Environment& machine, const QString& title,
                                           const std::filesystem::path& start, const QString& filter) {
    const QString chosen =
        QFileDialog::getOpenFileName(parent, title, QString::fromStdString(start.string()), filter);
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    return machine.WindowsPath(std::filesystem::path(chosen.toStdString()));
}

}  // namespace glyphmoor
