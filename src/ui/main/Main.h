// Main: the program's window. A toolbar, the page bar `vMenu` on the left,
// the four pages, and OK, Cancel, "&Apply" and Help at the bottom; the menu
// bar reaches the same commands, dispatched by key.
//
// The window holds no state of its own: the machine, the program-wide state
// and the catalogue are the core's, and the pages show them.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/Machine.h"
#include "foundation/Startup.h"
#include "icons/IconEditing.h"
#include "prompts/Prompt.h"
#include "prompts/modMsgbox.h"
#include "themes/ThemeBundle.h"
#include "tweaks/TweakTree.h"

#include <QDialog>
#include <QMainWindow>

#include <functional>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QAction;
class QHBoxLayout;
class QMenu;
class QPushButton;
class QStackedWidget;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace glyphmoor {

class FoldersPage;
class frmAddFav;
class IconsPage;
class TweaksPage;
class ThemesPage;

class Main final : public QMainWindow {
    Q_OBJECT
public:
    // `prompt` answers the window's questions; null: the program's message dialog.
    Main(Machine& machine, const StartRequest& request, Prompt* prompt = nullptr);
    ~Main() override;

    // Shows a page; for "Icons & Cursors" `item` 0 to 6 picks the group, for
    // "Tweak Shell" the tab. Builds the page's data the first time.
    void ShowPage(Page page, int item = 0);
    [[nodiscard]] Page CurrentPage() const;

    // Runs the command with that key; false when the key is not one the
    // handler knows or its part of the program is not in this build.
    bool Dispatch(std::string_view key);

    // The pop-up menu of the theme list or the tweak tree: its items with
    // their keys, each dispatched by key when chosen.
    enum class PopupContext { Themes, Shell };
    void FillPopup(QMenu* menu, PopupContext context);

    // "&Apply": writes what is staged, in the program's fixed order.
    void ApplyChanges();
    // Makes the shell reload its icons: Apply's step, which saves nothing itself.
    void RebuildIcons();
    // "&Rebuild Icon Cache": the same, then the machine written back.
    void RebuildIconsAndSave();

    // "Shl_Wht": the selected tweak's help text, as What's This shows it.
    void ShowTweakHelp();
    // Tests choose from the tweak tree's pop-up menu without showing it.
    void SetPopupAnswer(std::function<void(QMenu&)> answer) { m_popupAnswer = std::move(answer); }
    // The theme commands (MainThemes.cpp). OpenTheme loads a theme file into
    // the catalogue for Apply (an empty path asks with the Open dialog first);
    // SaveTheme saves over the current theme after the overwrite question,
    // SaveThemeAs asks for a name; DeleteTheme removes one theme's folder
    // after its question. Nothing reaches the machine's icons before Apply.
    void OpenTheme(std::string path);
    void SaveTheme();
    void SaveThemeAs(std::string proposed = "Untitled");
    void DeleteTheme(const std::string& caption, const std::string& path);
    // "&Package Theme...": packs the current theme into a Glyphbundle.
    void PackageTheme();

    // The Open and Save dialogs of the theme commands: the Windows path
    // chosen, nothing on Cancel. Tests put their own.
    enum class ThemeDialog { Open, Save, SaveBundle };
    using ThemeFilePicker =
        std::function<std::optional<std::string>(ThemeDialog, const std::string& proposed)>;
    void SetThemeFilePicker(ThemeFilePicker pick) { m_pickThemeFile = std::move(pick); }

    // The favourites (MainFavorites.cpp): the menu made from the favourites
    // folder, a favourite's theme opened, the Add Favorite dialog for the
    // selected theme (else the current one, unless `selectedOnly`), and the
    // folder opened with the desktop's handler.
    void BuildFavoritesMenu(QMenu* menu);
    void RefreshFavoritesMenu(QMenu* menu);
    void OpenFavorite(const std::string& target);
    void AddToFavorites(bool selectedOnly);
    void OrganizeFavorites();
    // How the Add Favorite dialog is shown; tests put their own.
    void SetAddFavoriteRunner(std::function<int(frmAddFav&)> run) { m_runAddFavorite = std::move(run); }
    // Tests answer the undo dialog without showing it: true goes ahead.
    void SetUndoAnswer(std::function<bool(QDialog&)> answer) { m_undoAnswer = std::move(answer); }

    [[nodiscard]] AppState& State() { return m_state; }
    [[nodiscard]] IconsPage& Icons() { return *m_icons; }
    [[nodiscard]] ThemesPage& Themes() { return *m_themes; }
    [[nodiscard]] FoldersPage& Folders() { return *m_folders; }
    [[nodiscard]] IconCatalogue& Catalogue() { return m_catalogue; }
    [[nodiscard]] TweaksPage& TweakPage() { return *m_tweakPage; }
    [[nodiscard]] TweakTree& Tweaks() { return m_tweaks; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // The constructor's steps: the four pages, the OK, Cancel, Apply and Help
    // buttons, and what start-up reads and shows.
    void BuildPages();
    QHBoxLayout* BuildButtons();
    void StartUp(const StartRequest& request);
    // Writes the machine back; a failure is shown and gives false.
    bool SaveMachine();

    // MainCommands.cpp: the menus, the toolbar and the dispatch table.
    void BuildMenus();
    void BuildStatusLine();
    void BuildToolbar();
    void RefreshRecentMenu();
    QAction* MenuItem(QMenu* menu, const QString& key, const QString& caption);
    void RestoreAllCommand(bool cursors);
    // Tools, "Restore all &Settings": after its question, every tweak's default.
    void RestoreSettingsCommand();
    // The "Shell" pop-up menu of the tweak tree at a global position.
    void ShowShellPopup(const QPoint& globalPosition);
    // Tools, "Undo all Glyphmoor changes": shows what returns, then returns it.
    void UndoAllCommand();
    // Opens an address with the desktop's handler; without one, says what
    // would have been opened.
    void OpenAddress(std::string_view address);
    void ShowAbout();

    // MainThemes.cpp: the theme page's wiring and the steps of the commands.
    void ConnectThemesPage();
    std::optional<std::string> PickThemeFileWithDialog(ThemeDialog dialog, const std::string& proposed);
    void WriteTheme(const std::string& path);
    void OpenBundle(const std::string& path);
    void ThemeBecameCurrent(const std::string& path);
    void ShowThemeProblem(const std::string& text);
    // Forgets every staged change: the lists show what the machine holds.
    void DropStagedChanges();
    bool DispatchThemeCommand(std::string_view key);

    QWidget* BuildPageBar();
    QWidget* UnavailablePage(const char* containerName, const char* tabName, const QStringList& tabs,
                             const QStringList& controls);
    void PendingChanged();
    MsgContext Messages();
    // The screen the window is on, as the tweak tree captures it.
    [[nodiscard]] DisplayCaps DisplayNow() const;
    void RefreshCaption();

    Machine& m_machine;
    AppEnvironment m_app;
    AppState m_state;
    IconCatalogue m_catalogue;
    IconNameMarks m_names;
    TweakTree m_tweaks;
    std::unique_ptr<Prompt> m_ownPrompt;
    Prompt* m_prompt;

    QToolBar* m_tbMain = nullptr;
    QTreeWidget* m_vMenu = nullptr;
    QStackedWidget* m_pages = nullptr;
    IconsPage* m_icons = nullptr;
    ThemesPage* m_themes = nullptr;
    FoldersPage* m_folders = nullptr;
    TweaksPage* m_tweakPage = nullptr;
    QMenu* m_mnuFile = nullptr;
    QPushButton* m_cmdApply = nullptr;
    std::map<std::string, QAction*, std::less<>> m_actions;
    std::function<bool(QDialog&)> m_undoAnswer;
    std::function<void(QMenu&)> m_popupAnswer;
    ThemeFilePicker m_pickThemeFile;
    std::function<int(frmAddFav&)> m_runAddFavorite;
};

}  // namespace glyphmoor
