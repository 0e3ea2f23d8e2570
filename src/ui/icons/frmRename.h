// frmRename: a new name for a desktop object or a special folder.
#pragma once

#include "icons/IconEditing.h"
#include "prompts/modMsgbox.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace glyphmoor {

class frmRename final : public QDialog {  // NOLINT(readability-identifier-naming)
    Q_OBJECT
public:
    // Renames the entry at `position` of group `groupNumber` on OK; the
    // program's message says when the name is empty.
    frmRename(IconCatalogue& catalogue, MsgContext& messages, IconNameMarks& names, int groupNumber,
              std::size_t position, QWidget* parent = nullptr);

    // Whether OK renamed the entry.
    [[nodiscard]] bool Renamed() const { return m_renamed; }

protected:
    void accept() override;

private:
    IconCatalogue& m_catalogue;
    MsgContext& m_messages;
    IconNameMarks& m_names;
    int m_group;
    std::size_t m_position;
    bool m_renamed = false;
    QLineEdit* m_txtName;
};

}  // namespace glyphmoor
