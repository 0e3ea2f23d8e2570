// ThemesPage: the "Themes" page. The theme list `lvThemes` (one item per
// theme of the library, its caption the theme's name, its picture the icon
// the theme gives "My Computer"), the path label `lblPath`, and the buttons
// "&Load Theme" and "&Refresh List".
//
// The page only lists and selects; opening, deleting and the pop-up menu's
// commands are the window's, which the page asks for through its signals.
#pragma once

#include "foundation/AppEnvironment.h"
#include "themes/ThemeLibrary.h"
#include "ui/icons/IconPictures.h"

#include <QWidget>

#include <optional>
#include <vector>

class QLabel;
class QListWidget;
class QPushButton;

namespace glyphmoor {

class ThemesPage final : public QWidget {
    Q_OBJECT
public:
    explicit ThemesPage(const AppEnvironment& app, QWidget* parent = nullptr);

    // The four views of the list.
    enum class View { LargeIcons, SmallIcons, List, Details };
    void SetView(View view);
    [[nodiscard]] View CurrentView() const { return m_view; }

    // Builds the list the first time the page is shown.
    void EnsureLoaded();
    // Rebuilds the list from the library folder (RefreshThemeList); the
    // selection, the path label and "&Load Theme" start again.
    void Refresh();
    [[nodiscard]] bool Loaded() const { return m_loaded; }

    // The theme last clicked, while the path label shows it.
    [[nodiscard]] std::optional<LibraryTheme> Selected() const;
    [[nodiscard]] QListWidget* List() const { return m_lvThemes; }

signals:
    // "&Load Theme" or a double-click: open this theme file.
    void openRequested(const QString& path);
    // The Delete key on a theme.
    void deleteRequested(const QString& caption, const QString& path);
    // A right click in the list: the window's pop-up menu for "Themes".
    void popupRequested(const QPoint& globalPosition);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ItemClicked();
    void ApplyViewLayout();

    const AppEnvironment& m_app;
    IconPictureCache m_pictures;
    std::vector<LibraryTheme> m_themes;
    QListWidget* m_lvThemes;
    QLabel* m_lblPath;
    QPushButton* m_cmdOpen;
    QPushButton* m_cmdRefresh;
    View m_view = View::LargeIcons;
    bool m_loaded = false;
};

}  // namespace glyphmoor
