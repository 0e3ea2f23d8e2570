// frmAddItem: "Add New Item", a program for a startup list: its name and its
// command, which Browse... fills with a program of the machine.
#pragma once

#include "foundation/Environment.h"

#include <QDialog>

#include <string>

class QLineEdit;
class QPushButton;

namespace glyphmoor {

class frmAddItem final : public QDialog {
    Q_OBJECT

public:
    frmAddItem(const Environment& machine, QWidget* parent = nullptr);

    [[nodiscard]] std::string Name() const;
    [[nodiscard]] std::string Command() const;

    // A program's Windows path as a command: quoted when it holds a blank.
    static std::string CommandOf(const std::string& program);

private:
    void Browse();
    void Check();

    const Environment& m_machine;
    QLineEdit* m_txtName;
    QLineEdit* m_txtCommand;
    QPushButton* m_cmdOK;
};

}  // namespace glyphmoor
