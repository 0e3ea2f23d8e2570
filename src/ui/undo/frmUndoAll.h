// frmUndoAll: shows what "Undo all Glyphmoor changes" would return to the
// machine's baseline, a step a line, before anything is done.
#pragma once

#include <QDialog>

#include <string>
#include <vector>

namespace glyphmoor {

class frmUndoAll final : public QDialog {
    Q_OBJECT

public:
    // `steps` as DescribeUndo gives them (TAB-separated fields).
    explicit frmUndoAll(const std::vector<std::string>& steps, QWidget* parent = nullptr);
};

}  // namespace glyphmoor
