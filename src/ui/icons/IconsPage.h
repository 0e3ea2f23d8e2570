// IconsPage: the "Icons & Cursors" page. Seven lists, one per catalogue
// group behind the tab strip `tabIcons`, the path label `lblPath` and the
// buttons "&Change...", "&Default Icon" and "Re&name...".
//
// The catalogue is the page's model: the lists show it and every button
// stages through the core (IconEditing); nothing is written before Apply.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"

#include "icons/IconEditing.h"
#include "prompts/modMsgbox.h"
#include "ui/icons/IconPictures.h"

#include <QWidget>

#include <array>
#include <functional>
#include <optional>
#include <string>

class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace glyphmoor {

class IconsPage final : public QWidget {
    Q_OBJECT
public:
    // `messages` reaches the machine's registry, the program-wide state and the prompt.
    IconsPage(MsgContext messages, const Environment& machine, IconCatalogue& catalogue, IconNameMarks& names,
              QWidget* parent = nullptr);

    // Builds the catalogue, pointers included, and fills the lists the first
    // time the page is shown; staged changes survive later visits.
    void EnsureLoaded();
    // Brings the list of group 1 to 7 to the front.
    void ShowGroup(int number);
    [[nodiscard]] int ActiveGroup() const;
    [[nodiscard]] QListWidget* List(int number) const {
        return m_lists.at(static_cast<std::size_t>(number - 1));
    }

    void ChangeSelected();
    void RestoreSelected();
    void RenameSelected();
    // Redraws every list from the catalogue, keeping the selections.
    void RefreshAll();

    // What "&Change..." asks for a pointer file (a Windows path; nothing on
    // Cancel): the pointer file dialog unless a test puts its own.
    void SetCursorPicker(std::function<std::optional<std::string>(const std::string&)> pick) {
        m_pickCursor = std::move(pick);
    }

signals:
    // Something was staged: the window enables "&Apply".
    void changed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void FillList(int number);
    void SelectEntry();
    [[nodiscard]] std::optional<std::size_t> SelectedPosition() const;
    std::optional<std::string> PickCursorWithDialog(const std::string& current);

    MsgContext m_messages;
    const Environment& m_machine;
    IconCatalogue& m_catalogue;
    AppState& m_state;
    IconNameMarks& m_names;
    IconPictureCache m_pictures;
    QTabBar* m_tabIcons;
    QStackedWidget* m_stack;
    std::array<QListWidget*, kIconGroupCount> m_lists{};
    QLabel* m_lblPath;
    QPushButton* m_cmdChange;
    QPushButton* m_cmdDefault;
    QPushButton* m_cmdRename;
    std::string m_pathText;
    std::function<std::optional<std::string>(const std::string&)> m_pickCursor;
};

}  // namespace glyphmoor
