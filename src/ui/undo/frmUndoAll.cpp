#include "ui/undo/frmUndoAll.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace glyphmoor {

frmUndoAll::frmUndoAll(const std::vector<std::string>& steps, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmUndoAll"));
    setWindowTitle(QStringLiteral("Undo all Glyphmoor changes"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(
        QStringLiteral("These registry values, keys and files return to what the machine held before "
                       "Glyphmoor first changed it. Changes you have not applied are discarded."),
        this);
    label->setWordWrap(true);
    layout->addWidget(label);
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("lstUndo"));
    for (const std::string& step : steps) {
        list->addItem(QString::fromStdString(step).replace(QLatin1Char('\t'), QStringLiteral("  ")));
    }
    layout->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton* undo = buttons->addButton(QStringLiteral("&Undo All"), QDialogButtonBox::AcceptRole);
    undo->setObjectName(QStringLiteral("cmdUndoAll"));
    // The safe answer is the default: Enter does not undo.
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(640, 360);
}

}  // namespace glyphmoor
