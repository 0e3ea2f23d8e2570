// The window's commands: the menu bar, the toolbar and the dispatch by key.
//
// Every menu item and toolbar button runs through Dispatch with its key: a
// menu item's key is its menu and index ("mnuTools(1)"), a toolbar button
// runs the command of the item it stands for. Commands whose part of the
// program is not in this build are shown disabled.
#include "foundation/RecentThemes.h"
#include "foundation/modMacros.h"
#include "ui/about/frmAbout.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/Main.h"
#include "ui/main/WhatsThis.h"
#include "ui/tweaks/TweaksPage.h"

#include "tweaks/TweakEditing.h"

#include "foundation/Baseline.h"
#include "ui/undo/frmUndoAll.h"

#include <QApplication>
#include "ui/main/WindowPictures.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QToolBar>
#include <QTreeWidget>
#include <QWhatsThis>

#include <functional>
#include <span>

namespace glyphmoor {

namespace {

struct Command {
    std::string_view key;
    // Null: the command's part of the program is not in this build.
    void (*run)(Main& window);
};

}  // namespace

QAction* Main::MenuItem(QMenu* menu, const QString& key, const QString& caption) {
    auto* action = menu->addAction(caption);
    action->setObjectName(key);
    const std::string k = key.toStdString();
    action->setWhatsThis(WhatsThisText(k));
    m_actions[k] = action;
    connect(action, &QAction::triggered, this, [this, k] { Dispatch(k); });
    return action;
}

void Main::BuildMenus() {
    QMenuBar* bar = menuBar();
    m_mnuFile = bar->addMenu(QStringLiteral("&File"));
    m_mnuFile->setObjectName(QStringLiteral("mnuFile"));
    MenuItem(m_mnuFile, QStringLiteral("mnuFile(0)"), QStringLiteral("&Open Theme..."))
        ->setIcon(WindowPicture(Picture::Open, 16));
    m_mnuFile->addSeparator();
    MenuItem(m_mnuFile, QStringLiteral("mnuFile(2)"), QStringLiteral("&Save Theme"))
        ->setIcon(WindowPicture(Picture::Save, 16));
    MenuItem(m_mnuFile, QStringLiteral("mnuFile(3)"), QStringLiteral("Save Theme &As..."));
    m_mnuFile->addSeparator()->setObjectName(QStringLiteral("mnuFile(4)"));
    MenuItem(m_mnuFile, QStringLiteral("mnuFile(5)"), QStringLiteral("&Exit"));

    QMenu* tools = bar->addMenu(QStringLiteral("&Tools"));
    tools->setObjectName(QStringLiteral("mnuTools"));
    MenuItem(tools, QStringLiteral("mnuTools(0)"), QStringLiteral("Restore all &Settings"))
        ->setIcon(WindowPicture(Picture::Settings, 16));
    MenuItem(tools, QStringLiteral("mnuTools(1)"), QStringLiteral("Restore all &Icons"))
        ->setIcon(WindowPicture(Picture::Restore, 16));
    MenuItem(tools, QStringLiteral("mnuTools(2)"), QStringLiteral("Restore all &Cursors"))
        ->setIcon(WindowPicture(Picture::Cursors, 16));
    tools->addSeparator();
    MenuItem(tools, QStringLiteral("mnuTools(4)"), QStringLiteral("&Rebuild Icon Cache"))
        ->setIcon(WindowPicture(Picture::Rebuild, 16));
    tools->addSeparator();
    MenuItem(tools, QStringLiteral("mnuTools(6)"), QStringLiteral("&Undo all Glyphmoor changes..."));

    BuildFavoritesMenu(bar->addMenu(QStringLiteral("&Favorites")));

    QMenu* help = bar->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    MenuItem(help, QStringLiteral("mnuHelp(0)"), QStringLiteral("&Contents and Index"))
        ->setIcon(WindowPicture(Picture::Help, 16));
    QAction* whatsThis = MenuItem(help, QStringLiteral("mnuHelp(1)"), QStringLiteral("What's &This?"));
    whatsThis->setIcon(WindowPicture(Picture::WhatsThis, 16));
    whatsThis->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F1));
    QMenu* web = help->addMenu(QStringLiteral("Glyphmoor on the &Web"));
    web->setObjectName(QStringLiteral("mnuHelpsub"));
    web->menuAction()->setObjectName(QStringLiteral("mnuHelp(2)"));
    MenuItem(web, QStringLiteral("mnuHelpsub(0)"), QStringLiteral("Glyphmoor &Web Site"))
        ->setIcon(WindowPicture(Picture::Web, 16));
    MenuItem(web, QStringLiteral("mnuHelpsub(1)"), QStringLiteral("&Email Veltrane"))
        ->setIcon(WindowPicture(Picture::Email, 16));
    web->addSeparator();
    MenuItem(web, QStringLiteral("mnuHelpsub(3)"), QStringLiteral("Additional &Icon Themes"))
        ->setIcon(WindowPicture(Picture::Themes, 16));
    help->addSeparator();
    MenuItem(help, QStringLiteral("mnuHelp(4)"), QStringLiteral("&About Glyphmoor"))
        ->setIcon(WindowPicture(Picture::About, 16));
}

void Main::RefreshRecentMenu() {
    // The recent themes stand after the separator at index 4.
    for (auto it = m_actions.begin(); it != m_actions.end();) {
        if (it->first.starts_with("RecentTheme ") || it->first == kRecentSeparatorKey) {
            m_mnuFile->removeAction(it->second);
            it->second->deleteLater();
            it = m_actions.erase(it);
        } else {
            ++it;
        }
    }
    const auto items = RecentMenuItems(m_machine.Registry());
    if (items.empty()) {
        return;
    }
    // After the separator at index 4, before "&Exit", with a separator of their own.
    QAction* exit = m_actions.at("mnuFile(5)");
    auto* separator = new QAction(m_mnuFile);
    separator->setSeparator(true);
    separator->setObjectName(QString::fromUtf8(kRecentSeparatorKey.data(), kRecentSeparatorKey.size()));
    m_mnuFile->insertAction(exit, separator);
    m_actions[std::string(kRecentSeparatorKey)] = separator;
    for (const RecentMenuItem& item : items) {
        auto* action = new QAction(QString::fromStdString(item.caption), m_mnuFile);
        action->setObjectName(QString::fromStdString(item.key));
        action->setWhatsThis(QStringLiteral("Opens this theme again, as it was opened or saved recently."));
        const std::string key = item.key;
        connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
        m_mnuFile->insertAction(separator, action);
        m_actions[item.key] = action;
    }
}

void Main::BuildToolbar() {
    m_tbMain = addToolBar(QStringLiteral("Toolbar"));
    m_tbMain->setObjectName(QStringLiteral("tbMain"));
    m_tbMain->setMovable(false);
    m_tbMain->setIconSize(QSize(24, 24));
    m_tbMain->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    QFont small = m_tbMain->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    m_tbMain->setFont(small);
    struct Button {
        const char* caption;  // null: a separator
        const char* key;
        Picture picture;
    };
    const Button buttons[16] = {
        {"Open", "mnuFile(0)", Picture::Open},
        {"Save", "mnuFile(2)", Picture::Save},
        {nullptr, nullptr, Picture::Open},
        {"Rebuild Icons", "mnuTools(4)", Picture::Rebuild},
        {"Restore Icons", "mnuTools(1)", Picture::Restore},
        {nullptr, nullptr, Picture::Open},
        {"Add to Favorites", "Add to Favorites", Picture::Favorites},
        {nullptr, nullptr, Picture::Open},
        {"Glyphmoor Web Site", "mnuHelpsub(0)", Picture::Web},
        {"Additional Icon Themes", "mnuHelpsub(3)", Picture::Themes},
        {"Email Veltrane", "mnuHelpsub(1)", Picture::Email},
        {nullptr, nullptr, Picture::Open},
        {"Help", "cmdHelp", Picture::Help},
        {"About Glyphmoor", "mnuHelp(4)", Picture::About},
        {nullptr, nullptr, Picture::Open},
        {"Exit", "mnuFile(5)", Picture::Exit},
    };
    int position = 1;
    for (const Button& b : buttons) {
        QAction* action = nullptr;
        if (b.caption == nullptr) {
            action = m_tbMain->addSeparator();
        } else {
            action = m_tbMain->addAction(WindowPicture(b.picture), QString::fromUtf8(b.caption));
            const std::string key = b.key;
            action->setWhatsThis(WhatsThisText(key));
            connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
            const auto item = m_actions.find(key);
            action->setEnabled(key == "cmdHelp" || key == "Add to Favorites" ||
                               (item != m_actions.end() && item->second->isEnabled()));
        }
        action->setObjectName(QStringLiteral("tbMain(%1)").arg(position++));
    }
}

void Main::FillPopup(QMenu* menu, PopupContext context) {
    struct Item {
        const char* caption;  // null: a separator
        const char* key;
    };
    static const Item themes[] = {
        {"&Load Theme", "Theme_Open"},
        {"&Apply Now", "Theme_Apply"},
        {nullptr, "Sep1"},
        {"Add to &Favorites...", "Theme_AddFav"},
        {nullptr, "Sep2"},
        {"&Package Theme...", "Theme_Package"},
        {nullptr, "Sep3"},
        {"&Delete", "Theme_Delete"},
        {nullptr, "Sep4"},
    };
    static const Item views[] = {
        {"Lar&ge Icons", "Theme_VLarge"},
        {"S&mall Icons", "Theme_VSmall"},
        {"&List", "Theme_VList"},
        {"&Details", "Theme_VDetails"},
    };
    static const Item themesEnd[] = {{nullptr, "Sep5"}, {"&Refresh List", "Theme_Refresh"}};
    static const Item shell[] = {
        {"&What's This?", "Shl_Whats"},
        {nullptr, "sep1"},
        {"Colla&pse", "Shl_Col"},
        {"&Expand", "Shl_Exp"},
        {"&Toggle", "Shl_Tgl"},
        {"&Edit", "Edit"},
        {nullptr, "sep2"},
        {"&Expand &All", "Shl_ExpA"},
        {"&Collapse All", "Shl_ColA"},
        {nullptr, "sep3"},
        {"&Delete", "Shl_Del"},
        {nullptr, "sep4"},
        {"&New", "Shl_New"},
    };
    const auto add = [this](QMenu* to, std::span<const Item> items) {
        for (const Item& item : items) {
            QAction* action =
                item.caption == nullptr ? to->addSeparator() : to->addAction(QString::fromUtf8(item.caption));
            action->setObjectName(QString::fromUtf8(item.key));
            if (item.caption != nullptr) {
                const std::string key = item.key;
                connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
            }
        }
    };
    menu->clear();
    if (context == PopupContext::Themes) {
        add(menu, themes);
        QMenu* view = menu->addMenu(QStringLiteral("&View"));
        view->menuAction()->setObjectName(QStringLiteral("Theme_View"));
        add(view, views);
        add(menu, themesEnd);
    } else {
        add(menu, shell);
    }
}

bool Main::Dispatch(std::string_view key) {
    static const std::array<Command, 30> commands = {{
        {"mnuTools(0)", [](Main& w) { w.RestoreSettingsCommand(); }},
        {"Shl_Tgl", [](Main& w) { w.TweakPage().ToggleSelected(); }},
        {"Edit", [](Main& w) { w.TweakPage().EditSelected(); }},
        {"Shl_Exp", [](Main& w) { w.TweakPage().ExpandSelected(true); }},
        {"Shl_Col", [](Main& w) { w.TweakPage().ExpandSelected(false); }},
        {"Shl_ExpA", [](Main& w) { w.TweakPage().ExpandAll(true); }},
        {"Shl_ColA", [](Main& w) { w.TweakPage().ExpandAll(false); }},
        {"Shl_Wht", [](Main& w) { w.ShowTweakHelp(); }},
        {"Shl_Del", [](Main& w) { w.TweakPage().DeleteSelected(); }},
        {"Shl_New", [](Main& w) { w.TweakPage().NewItem(); }},
        {"Theme_Package", [](Main& w) { w.PackageTheme(); }},
        {"mnuFile(0)", [](Main& w) { w.OpenTheme(""); }},
        {"mnuFile(2)", [](Main& w) { w.SaveTheme(); }},
        {"mnuFile(3)", [](Main& w) { w.SaveThemeAs("Untitled"); }},
        {"mnuTools(4)", [](Main& w) { w.RebuildIconsAndSave(); }},
        {"mnuFile(5)", [](Main& w) { w.close(); }},
        {"mnuTools(1)", [](Main& w) { w.RestoreAllCommand(false); }},
        {"mnuTools(2)", [](Main& w) { w.RestoreAllCommand(true); }},
        {"mnuTools(6)", [](Main& w) { w.UndoAllCommand(); }},
        {"mnuHelp(0)", [](Main& w) { w.Dispatch("cmdHelp"); }},
        {"mnuHelp(1)", [](Main&) { QWhatsThis::enterWhatsThisMode(); }},
        {"mnuHelpsub(0)", [](Main& w) { w.OpenAddress(kWebSite); }},
        {"mnuHelpsub(1)", [](Main& w) { w.OpenAddress("mailto:" + std::string(kSupportMail)); }},
        {"mnuHelpsub(3)", [](Main& w) { w.OpenAddress(kMoreThemes); }},
        {"mnuHelp(4)", [](Main& w) { w.ShowAbout(); }},
        {"cmdHelp", [](Main& w) { ShowHelpTopic("Contents", &w); }},
        {"mnuFav(0)", [](Main& w) { w.OrganizeFavorites(); }},
        {"mnuFav(1)", [](Main& w) { w.AddToFavorites(false); }},
        {"Add to Favorites", [](Main& w) { w.AddToFavorites(true); }},
        {"Theme_AddFav", [](Main& w) { w.AddToFavorites(true); }},
    }};
    for (const Command& command : commands) {
        if (command.key == key) {
            command.run(*this);
            RefreshCaption();
            return true;
        }
    }
    if (DispatchThemeCommand(key)) {
        RefreshCaption();
        return true;
    }
    // The pop-up items "&Details" and "&What's
    // This?" carry the keys "Theme_VDetails" and "Shl_Whats", which the
    // handler does not know: they do nothing, as the program has always done.
    return false;
}

void Main::OpenAddress(std::string_view address) {
    if (!m_machine.Sys().OpenDocument(address)) {
        const QString text = QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size()));
        QMessageBox::information(this, QStringLiteral("Glyphmoor"),
                                 QStringLiteral("No program on this computer opens addresses such as this "
                                                "one. Glyphmoor would have opened:\n\n%1")
                                     .arg(text));
    }
}

void Main::ShowAbout() {
    frmAbout about([this](std::string_view address) { OpenAddress(address); }, this);
    about.exec();
}

void Main::RestoreAllCommand(bool cursors) {
    MsgContext messages = Messages();
    if ((cursors ? MsgConfirmRestorePointers(messages) : MsgConfirmRestoreIcons(messages)) != kRestoreAllOk) {
        return;
    }
    m_icons->EnsureLoaded();
    RestoreAll(m_catalogue, m_machine.Registry(), m_state, cursors);
    ShowPage(Page::IconsAndCursors, cursors ? 6 : m_icons->ActiveGroup() - 1);
    m_icons->RefreshAll();
    PendingChanged();
}

void Main::RestoreSettingsCommand() {
    MsgContext messages = Messages();
    if (MsgConfirmRestoreSettings(messages) != kRestoreSettingsOk) {
        return;
    }
    m_tweakPage->EnsureLoaded(DisplayNow());
    RestoreTweakDefaults(m_tweaks, m_state);
    m_tweakPage->Refresh();
    PendingChanged();
}

void Main::ShowShellPopup(const QPoint& globalPosition) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuShell"));
    FillPopup(&menu, PopupContext::Shell);
    if (m_popupAnswer) {
        m_popupAnswer(menu);
        return;
    }
    menu.exec(globalPosition);
}

void Main::ShowTweakHelp() {
    const QString text = m_tweakPage->SelectedHelp();
    if (!text.isEmpty()) {
        QWhatsThis::showText(m_tweakPage->Tree()->mapToGlobal(m_tweakPage->Tree()->rect().center()), text,
                             m_tweakPage->Tree());
    }
}

void Main::UndoAllCommand() {
    RegistryStore& registry = m_machine.Registry().Inner();
    const UndoPlan plan = PlanUndo(registry, m_machine.Env());
    if (plan.Empty()) {
        m_prompt->SetPromptText("Glyphmoor has changed nothing on this machine: there is nothing to undo.");
        m_prompt->ShowPrompt("", "", "OK", static_cast<std::int16_t>(PromptIcon::Information), 0, "");
        return;
    }
    frmUndoAll dialog(DescribeUndo(plan), this);
    if (m_undoAnswer ? !m_undoAnswer(dialog) : dialog.exec() != QDialog::Accepted) {
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const std::vector<std::string> kept = UndoAll(registry, m_machine.Env());
    m_machine.Registry().ReadRecords();
    const Status saved = m_machine.Save();
    m_machine.Sys().BroadcastSettingChange(kSpiSetIconMetrics, std::nullopt);
    // What was staged belonged to the machine as it was; the lists read it again.
    DropStagedChanges();
    QApplication::restoreOverrideCursor();
    if (!saved.ok() || !kept.empty()) {
        std::string text =
            saved.ok() ? std::string() : "Glyphmoor could not write the machine back:\n\n" + saved.reason();
        for (const std::string& file : kept) {
            text += (text.empty() ? "" : "\n") + std::string("Left in place: ") + file;
        }
        m_prompt->SetPromptText(text);
        m_prompt->ShowPrompt("", "", "OK", static_cast<std::int16_t>(PromptIcon::Exclamation), 0, "");
    }
}

}  // namespace glyphmoor
