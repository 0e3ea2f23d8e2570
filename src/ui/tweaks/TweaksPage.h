// TweaksPage: the "Tweak Shell" page. The tree `tvTweak` behind the tab strip
// `tabShell` shows the core's TweakTree: a click on a box (or the space bar)
// toggles it, a value item opens the value editor beside the tree (`txtTweak`,
// the scroll bar `scrTweak` and the unit caption `lblTweak`), a right click asks
// the window for the "Shell" pop-up menu. Every change stays in the tree until
// Apply.
#pragma once

#include "prompts/modMsgbox.h"
#include "tweaks/TweakTree.h"

#include <QWidget>

#include <string>

class QLabel;
class QLineEdit;
class QScrollBar;
class QTabBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace glyphmoor {

class TweaksPage final : public QWidget {
    Q_OBJECT
public:
    TweaksPage(MsgContext messages, TweakTree& tree, QWidget* parent = nullptr);

    // Builds the tree the first time the page is shown, with the display's
    // depth and size as they are now, and fills the view.
    void EnsureLoaded(const DisplayCaps& caps);
    // Shows every node's state again (after Restore all Settings, after Apply).
    void Refresh();

    // The pop-up menu's commands on the selected node.
    void ToggleSelected();
    void EditSelected();
    void ExpandSelected(bool expand);
    void ExpandAll(bool expand);
    // The selected item's help text, or empty.
    [[nodiscard]] QString SelectedHelp() const;

    [[nodiscard]] QTreeWidget* Tree() const { return m_tvTweak; }
    [[nodiscard]] QTreeWidgetItem* ItemOf(const std::string& key) const;
    [[nodiscard]] std::string SelectedKey() const;

signals:
    // Something was staged: the window enables Apply.
    void changed();
    // A right click on the tree at a global position: the window shows its pop-up menu.
    void popupRequested(const QPoint& globalPosition);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill();
    void ShowState(QTreeWidgetItem* item, const TweakNode& node);
    void Toggle(QTreeWidgetItem* item);
    void NodeSelected();
    void ScrollChanged(int value);
    void TextTyped(const QString& text);

    MsgContext m_messages;
    TweakTree& m_tree;
    QTabBar* m_tabShell;
    QTreeWidget* m_tvTweak;
    QLineEdit* m_txtTweak;
    QScrollBar* m_scrTweak;
    QLabel* m_lblTweak;
    QWidget* m_editor;
};

}  // namespace glyphmoor
