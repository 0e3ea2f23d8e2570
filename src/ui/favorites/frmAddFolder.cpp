#include "ui/favorites/frmAddFolder.h"

#include "themes/Favorites.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace glyphmoor {

frmAddFolder::frmAddFolder(Machine& machine, std::string parentFolder, QWidget* parent)
    : QDialog(parent), m_machine(machine), m_parent(std::move(parentFolder)) {
    setObjectName(QStringLiteral("frmAddFolder"));
    setWindowTitle(QStringLiteral("Create New Folder"));
    auto* layout = new QVBoxLayout(this);
    auto* text =
        new QLabel(QStringLiteral("Glyphmoor will create the following folder for you. You can use this "
                                  "folder to organize shortcuts on your Favorites menu."));
    text->setWordWrap(true);
    layout->addWidget(text);
    auto* label = new QLabel(QStringLiteral("Folder Name:"));
    m_txtFolder = new QLineEdit;
    m_txtFolder->setObjectName(QStringLiteral("txtFolder"));
    label->setBuddy(m_txtFolder);
    layout->addWidget(label);
    layout->addWidget(m_txtFolder);
    auto* buttons = new QDialogButtonBox;
    m_cmdOK = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    m_cmdOK->setObjectName(QStringLiteral("cmdOK"));
    m_cmdOK->setEnabled(false);
    QPushButton* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    layout->addWidget(buttons);
    connect(m_txtFolder, &QLineEdit::textChanged, this,
            [this](const QString& name) { m_cmdOK->setEnabled(!name.isEmpty()); });
    connect(m_cmdOK, &QPushButton::clicked, this, &frmAddFolder::Create);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(360, sizeHint().height());
}

void frmAddFolder::Create() {
    const auto made = NewFavoritesFolder(m_machine, m_parent, m_txtFolder->text().toStdString());
    if (!made.ok()) {
        QMessageBox::warning(
            this, QStringLiteral("Create New Folder"),
            QStringLiteral("The folder was not made: %1.").arg(QString::fromStdString(made.reason())));
        return;
    }
    m_made = made.value();
    accept();
}

}  // namespace glyphmoor
