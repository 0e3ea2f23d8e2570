#include "ui/tweaks/frmAddItem.h"

#include "ui/MachineFilePicker.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace glyphmoor {

frmAddItem::frmAddItem(const Environment& machine, QWidget* parent) : QDialog(parent), m_machine(machine) {
    setObjectName(QStringLiteral("frmAddItem"));
    setWindowTitle(QStringLiteral("Add New Item"));
    auto* layout = new QGridLayout(this);
    m_txtName = new QLineEdit;
    m_txtName->setObjectName(QStringLiteral("txtName"));
    m_txtCommand = new QLineEdit;
    m_txtCommand->setObjectName(QStringLiteral("txtCommand"));
    auto* name = new QLabel(QStringLiteral("&Name:"));
    name->setBuddy(m_txtName);
    auto* command = new QLabel(QStringLiteral("&Command:"));
    command->setBuddy(m_txtCommand);
    auto* browse = new QPushButton(QStringLiteral("&Browse..."));
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    layout->addWidget(name, 0, 0);
    layout->addWidget(m_txtName, 0, 1, 1, 2);
    layout->addWidget(command, 1, 0);
    layout->addWidget(m_txtCommand, 1, 1);
    layout->addWidget(browse, 1, 2);
    auto* buttons = new QDialogButtonBox;
    m_cmdOK = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    m_cmdOK->setObjectName(QStringLiteral("cmdOK"));
    m_cmdOK->setEnabled(false);
    QPushButton* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    layout->addWidget(buttons, 2, 0, 1, 3);
    connect(m_txtName, &QLineEdit::textChanged, this, &frmAddItem::Check);
    connect(m_txtCommand, &QLineEdit::textChanged, this, &frmAddItem::Check);
    connect(browse, &QPushButton::clicked, this, &frmAddItem::Browse);
    connect(m_cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(420, sizeHint().height());
}

std::string frmAddItem::Name() const {
    return m_txtName->text().trimmed().toStdString();
}

std::string frmAddItem::Command() const {
    return m_txtCommand->text().trimmed().toStdString();
}

std::string frmAddItem::CommandOf(const std::string& program) {
    return program.find(' ') == std::string::npos ? program : "\"" + program + "\"";
}

void frmAddItem::Check() {
    m_cmdOK->setEnabled(!Name().empty() && !Command().empty());
}

void frmAddItem::Browse() {
    const auto program =
        PickMachineFile(this, m_machine, QStringLiteral("Browse"), m_machine.HostPath("C:\\Program Files"),
                        QStringLiteral("Programs (*.exe *.com *.bat);;All Files (*)"));
    if (program) {
        m_txtCommand->setText(QString::fromStdString(CommandOf(*program)));
    }
}

}  // namespace glyphmoor
