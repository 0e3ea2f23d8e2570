// frmAddFolder: "Create New Folder", a folder for favourites made below a
// parent folder of the favourites folder.
#pragma once

#include "foundation/Machine.h"

#include <QDialog>

#include <string>

class QLineEdit;
class QPushButton;

namespace glyphmoor {

class frmAddFolder final : public QDialog {
    Q_OBJECT

public:
    // `parent` is a folder of the favourites (a Windows path).
    frmAddFolder(Machine& machine, std::string parentFolder, QWidget* parent = nullptr);

    // The folder made, once OK has made it.
    [[nodiscard]] const std::string& Made() const { return m_made; }

private:
    void Create();

    Machine& m_machine;
    std::string m_parent;
    std::string m_made;
    QLineEdit* m_txtFolder;
    QPushButton* m_cmdOK;
};

}  // namespace glyphmoor
