#include "ui/icons/frmRename.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace glyphmoor {

frmRename::frmRename(IconCatalogue& catalogue, MsgContext& messages, IconNameMarks& names, int groupNumber,
                     std::size_t position, QWidget* parent)
    : QDialog(parent),
      m_catalogue(catalogue),
      m_messages(messages),
      m_names(names),
      m_group(groupNumber),
      m_position(position) {
    setObjectName(QStringLiteral("frmRename"));
    setWindowTitle(QStringLiteral("Rename Icon"));
    const IconGroup& group = catalogue.Group(groupNumber);

    auto* lblExplain = new QLabel(QStringLiteral("New name for your system icon:"), this);
    lblExplain->setObjectName(QStringLiteral("lblExplain"));
    lblExplain->setText(QStringLiteral("Type a new name for ") +
                        QString::fromStdString(std::string(group.KeyAt(position))));
    auto* lblName = new QLabel(QStringLiteral("&Name:"), this);
    m_txtName = new QLineEdit(QString::fromStdString(RenameStartText(group, position)), this);
    m_txtName->setObjectName(QStringLiteral("txtName"));
    m_txtName->selectAll();
    lblName->setBuddy(m_txtName);
    auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    auto* cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* layout = new QGridLayout(this);
    layout->addWidget(lblExplain, 0, 0, 1, 2);
    layout->addWidget(lblName, 1, 0);
    layout->addWidget(m_txtName, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons, 2, 0, 1, 2);

    connect(cmdOK, &QPushButton::clicked, this, &frmRename::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &frmRename::reject);
}

void frmRename::accept() {
    const std::string name = m_txtName->text().toStdString();
    switch (RenameIcon(m_catalogue, m_messages.state, m_names, m_group, m_position, name)) {
        case RenameOutcome::EmptyName:
            MsgNameRequired(m_messages);
            return;
        case RenameOutcome::Unchanged:
            break;
        case RenameOutcome::Renamed:
            m_renamed = true;
            break;
    }
    QDialog::accept();
}

}  // namespace glyphmoor
