// frmAddFav: "Add Favorite", a shortcut to a theme made in the favourites
// folder or a folder of it chosen in the tree `tvExplorer`.
#pragma once

#include "foundation/Machine.h"
#include "prompts/Prompt.h"

#include <QDialog>

#include <functional>
#include <string>

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace glyphmoor {

class frmAddFolder;

class frmAddFav final : public QDialog {
    Q_OBJECT

public:
    // `theme` is the theme file (a Windows path); `prompt` asks before an
    // existing favourite of the same name is replaced.
    frmAddFav(Machine& machine, Prompt& prompt, std::string theme, QWidget* parent = nullptr);

    // The link made, once OK has made it.
    [[nodiscard]] const std::string& Made() const { return m_made; }
    // How "N&ew Folder..." shows its dialog; tests put their own.
    void SetFolderDialogRunner(std::function<int(frmAddFolder&)> run) { m_runFolderDialog = std::move(run); }

private:
    void ShowTree();
    void FillTree(const std::string& select);
    void NewFolder();
    void Create();
    [[nodiscard]] std::string SelectedFolder() const;

    Machine& m_machine;
    Prompt& m_prompt;
    std::string m_theme;
    std::string m_made;
    QLineEdit* m_txtShortcut;
    QTreeWidget* m_tvExplorer;
    QPushButton* m_cmdCreatein;
    QPushButton* m_cmdNew;
    std::function<int(frmAddFolder&)> m_runFolderDialog;
};

}  // namespace glyphmoor
