// The Themes page of the window on a fresh default machine: the list, Open,
// Save, Save As, Delete, the recent themes and Apply, with the machine read
// back from its files afterwards. A screenshot of the page goes to
// $GLYPHMOOR_SCREENSHOT_DIR when it is set.
#include "WindowFixture.h"
#include "foundation/RecentThemes.h"
#include "icons/IconCatalogue.h"
#include "themes/BundleZip.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeLibrary.h"
#include "ui/favorites/frmAddFav.h"
#include "ui/favorites/frmAddFolder.h"
#include "ui/icons/IconsPage.h"
#include "ui/themes/ThemesPage.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>

#include <deque>
#include <fstream>

namespace glyphmoor::test {
namespace {

constexpr const char* kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";
constexpr const char* kLibrary = "C:\\Program Files\\Glyphmoor\\Themes";
constexpr const char* kDefaultMyComputer = "C:\\WINDOWS\\explorer.exe,0";

}  // namespace

class ThemesPageTest : public WindowFixture {
    Q_OBJECT

private:
    // What the Open and Save dialogs answer, in turn; what they were asked.
    std::deque<std::optional<std::string>> m_picks;
    std::vector<std::pair<Main::ThemeDialog, std::string>> m_asked;

    void NewWindow(const StartRequest& request = {}) {
        OpenWindow(request);
        m_window->SetThemeFilePicker([this](Main::ThemeDialog dialog, const std::string& proposed) {
            m_asked.emplace_back(dialog, proposed);
            std::optional<std::string> answer;
            if (!m_picks.empty()) {
                answer = m_picks.front();
                m_picks.pop_front();
            }
            return answer;
        });
    }
    template <typename T = QWidget>
    T* PageControl(const char* name) {
        return m_window->Themes().findChild<T*>(QString::fromUtf8(name));
    }
    QListWidget* List() { return m_window->Themes().List(); }
    QStringList Captions() {
        QStringList captions;
        for (int row = 0; row < List()->count(); ++row) {
            captions << List()->item(row)->data(Qt::UserRole + 1).toString();
        }
        return captions;
    }
    void Click(const QString& caption) {
        for (int row = 0; row < List()->count(); ++row) {
            if (List()->item(row)->data(Qt::UserRole + 1).toString() == caption) {
                QListWidgetItem* item = List()->item(row);
                List()->scrollToItem(item);
                QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                                  List()->visualItemRect(item).center());
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no theme ") + caption));
    }
    // A theme in a folder of its own in the library giving My Computer `icon`.
    std::string WriteTheme(const std::string& name, const std::string& icon) {
        const std::string path = std::string(kLibrary) + "\\" + name + "\\" + name + ".gmtheme";
        std::filesystem::create_directories(Host(path).parent_path());
        std::ofstream(Host(path)) << "[Desktop Icons]\nMy Computer=" << icon << "\n";
        return path;
    }
    IconLocation MyComputer() { return m_window->Catalogue().Group(1).Find("My Computer")->Current(); }
    // My Computer's icon as the machine's files hold it.
    std::string StoredMyComputer() {
        auto machine = OpenMachineFolder(MachineDir());
        if (!machine.ok()) {
            return "no machine";
        }
        const AppEnvironment app = InitEnvironment((*machine)->Env());
        IconCatalogue catalogue((*machine)->Registry(), app);
        catalogue.DetectShellIcons();
        return catalogue.Group(1).Find("My Computer")->Current().Text();
    }

private slots:
    void init() {
        MakeMachine();
        m_picks.clear();
        m_asked.clear();
        NewWindow();
    }
    void cleanup() { CloseAll(); }

    void aThemeAddedToFavoritesInAFolderOfItsOwnOpensFromTheMenu() {
        const std::string theme = WriteTheme("Sea", "C:\\WINDOWS\\explorer.exe,2");
        const std::string favorites = m_machine->Env().ProgramDirectory() + "\\Favorites";
        std::filesystem::remove_all(Host(favorites));
        // Without a selected theme the toolbar's Add to Favorites says so and opens nothing.
        bool opened = false;
        m_window->SetAddFavoriteRunner([&](frmAddFav&) {
            opened = true;
            return 0;
        });
        m_prompt->Answer({PromptAnswer::Press(0)});
        QVERIFY(m_window->Dispatch("Add to Favorites"));
        QVERIFY(!opened);
        QCOMPARE(
            m_prompt->Shown().back().text,
            std::string("You must open or select a theme before it can be added to your Favorites menu."));

        m_window->Themes().Refresh();
        Click(QStringLiteral("Sea"));
        m_window->SetAddFavoriteRunner([&](frmAddFav& dialog) {
            auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("txtShortcut"));
            [&] {
                QCOMPARE(name->text(), QStringLiteral("Sea"));
                QCOMPARE(name->selectedText(), QStringLiteral("Sea"));
                QVERIFY(!dialog.findChild<QPushButton*>(QStringLiteral("cmdNew"))->isEnabled());
            }();
            name->setText(QStringLiteral("Deep Sea"));
            dialog.findChild<QPushButton*>(QStringLiteral("cmdCreatein"))->click();
            dialog.SetFolderDialogRunner([](frmAddFolder& folder) {
                auto* ok = folder.findChild<QPushButton*>(QStringLiteral("cmdOK"));
                const bool offWhileEmpty = !ok->isEnabled();
                folder.findChild<QLineEdit*>(QStringLiteral("txtFolder"))->setText(QStringLiteral("Blue"));
                if (offWhileEmpty && ok->isEnabled()) {
                    ok->click();
                }
                return folder.result();
            });
            dialog.findChild<QPushButton*>(QStringLiteral("cmdNew"))->click();
            dialog.show();
            Screenshot(dialog, QStringLiteral("add-favorite"));
            dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
            return dialog.result();
        });
        QVERIFY(m_window->Dispatch("Theme_AddFav"));
        QVERIFY(std::filesystem::is_regular_file(Host(favorites + "\\Blue\\Deep Sea.lnk")));

        // The menu is made from the folder when it opens; its favourite opens the theme.
        auto* menu = m_window->menuBar()->findChild<QMenu*>(QStringLiteral("mnuFav"));
        QVERIFY(QMetaObject::invokeMethod(menu, "aboutToShow"));
        QMenu* blue = nullptr;
        for (QAction* action : menu->actions()) {
            if (action->menu() != nullptr && action->text() == QStringLiteral("Blue")) {
                blue = action->menu();
            }
        }
        QVERIFY(blue != nullptr);
        QCOMPARE(blue->actions().size(), 1);
        QCOMPARE(blue->actions().front()->text(), QStringLiteral("Deep Sea"));
        blue->actions().front()->trigger();
        QCOMPARE(MyComputer().Text(), std::string("C:\\WINDOWS\\explorer.exe,2"));
        QCOMPARE(m_window->State().currentTheme, theme);
    }

    void theFirstStartListsTheStarterThemesWithTheirPictures() {
        QCOMPARE(m_window->CurrentPage(), Page::Themes);
        QVERIFY2(List()->count() >= 3, qPrintable(Captions().join(QLatin1Char(','))));
        for (int row = 0; row < List()->count(); ++row) {
            const QImage picture = List()->item(row)->icon().pixmap(32, 32).toImage();
            QVERIFY2(picture.pixelColor(16, 16).alpha() != 0 || picture.pixelColor(12, 20).alpha() != 0,
                     qPrintable(List()->item(row)->text()));
        }
        // The path label and "&Load Theme" wait for a click.
        QVERIFY(PageControl<QLabel>("lblPath")->isHidden());
        QVERIFY(!PageControl<QPushButton>("cmdOpen")->isEnabled());
        Click(Captions().front());
        QVERIFY(PageControl<QLabel>("lblPath")->isVisible());
        QVERIFY(PageControl<QLabel>("lblPath")->text().endsWith(QStringLiteral(".gmtheme")));
        QVERIFY(PageControl<QPushButton>("cmdOpen")->isEnabled());
        Screenshot(*m_window, QStringLiteral("themes"));
    }

    void aLoadedThemeChangesNothingUntilApply() {
        WriteTheme("Plain", "C:\\WINDOWS\\SYSTEM\\shell32.dll,8");
        QTest::mouseClick(PageControl<QPushButton>("cmdRefresh"), Qt::LeftButton);
        Click(QStringLiteral("Plain"));
        QTest::mouseClick(PageControl<QPushButton>("cmdOpen"), Qt::LeftButton);
        QCOMPARE(MyComputer().Text(), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,8"));
        QCOMPARE(m_window->windowTitle(),
                 QStringLiteral("Glyphmoor - C:\\Program Files\\Glyphmoor\\Themes\\Plain\\Plain"));
        QVERIFY(m_window->State().themeLoaded);
        QVERIFY(Control<QPushButton>("cmdApply")->isEnabled());
        QCOMPARE(StoredMyComputer(), std::string(kDefaultMyComputer));
        // The theme is the newest recent theme, and its menu item opens it.
        QCOMPARE(Control<QAction>("RecentTheme 1")->text(), QStringLiteral("&1 Plain.gmtheme"));
        QVERIFY(m_window->Dispatch("Theme_Apply"));
        QCOMPARE(StoredMyComputer(), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,8"));
        QVERIFY(!m_window->State().themeLoaded);
    }

    void doubleClickAndTheRecentMenuOpenATheme() {
        const std::string path = WriteTheme("Second", "C:\\WINDOWS\\SYSTEM\\shell32.dll,9");
        m_window->Themes().Refresh();
        Click(QStringLiteral("Second"));
        QListWidgetItem* item = List()->currentItem();
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, List()->visualItemRect(item).center());
        QCOMPARE(MyComputer().index, 9);
        m_window->ApplyChanges();
        // Another theme, then the first again from the recent menu.
        WriteTheme("Third", "C:\\WINDOWS\\SYSTEM\\shell32.dll,11");
        m_window->OpenTheme(std::string(kLibrary) + "\\Third\\Third.gmtheme");
        QCOMPARE(MyComputer().index, 11);
        QCOMPARE(RecentThemes(m_machine->Registry()).at(1), path);
        Control<QAction>("RecentTheme 2")->trigger();
        QCOMPARE(MyComputer().index, 9);
        // A theme already in the list keeps its place.
        QCOMPARE(RecentThemes(m_machine->Registry()).at(1), path);
    }

    void theOpenDialogAsksAgainAfterAFileOfUnknownType() {
        m_picks = {std::string("C:\\WINDOWS\\notes.txt"), std::nullopt};
        Control<QAction>("mnuFile(0)")->trigger();
        QCOMPARE(m_asked.size(), std::size_t{2});
        QCOMPARE(m_asked.front().first, Main::ThemeDialog::Open);
        QCOMPARE(m_prompt->Shown().size(), std::size_t{1});
        QVERIFY(m_prompt->Shown().back().text.find("C:\\WINDOWS\\notes.txt") != std::string::npos);
        QVERIFY(!m_window->State().themeLoaded);
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Glyphmoor"));
        // The toolbar's Open is the same command.
        m_picks = {std::nullopt};
        Control<QAction>("tbMain(1)")->trigger();
        QCOMPARE(m_asked.size(), std::size_t{3});
    }

    void saveAsPutsTheThemeInAFolderOfItsOwn() {
        m_picks = {std::string(kLibrary) + "\\Mine"};
        Control<QAction>("mnuFile(3)")->trigger();
        QCOMPARE(m_asked.back(), std::make_pair(Main::ThemeDialog::Save, std::string("Untitled")));
        const std::string saved = std::string(kLibrary) + "\\Mine\\Mine.gmtheme";
        QVERIFY(std::filesystem::is_regular_file(Host(saved)));
        QVERIFY(Captions().contains(QStringLiteral("Mine")));
        QCOMPARE(m_window->windowTitle(),
                 QStringLiteral("Glyphmoor - C:\\Program Files\\Glyphmoor\\Themes\\Mine\\Mine"));
        QCOMPARE(Stored(kSettings, "Current Theme"), saved);
        // Save As proposes the current theme's name next time.
        m_picks = {std::nullopt};
        m_window->SaveThemeAs();
        QCOMPARE(m_asked.back().second, std::string("Mine"));
    }

    void quickSaveAsksBeforeOverwriting_data() {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("ticked");
        QTest::addColumn<bool>("savedOver");
        QTest::addColumn<bool>("askedForName");
        QTest::addColumn<QString>("dialogOverwrite");
        QTest::newRow("Yes") << 2 << false << true << false << "10";
        QTest::newRow("No: Save As") << 1 << false << false << true << "10";
        QTest::newRow("Cancel, ticked") << 0 << true << false << false << "1";
    }
    void quickSaveAsksBeforeOverwriting() {
        QFETCH(int, button);
        QFETCH(bool, ticked);
        QFETCH(bool, savedOver);
        QFETCH(bool, askedForName);
        QFETCH(QString, dialogOverwrite);
        const std::string path = WriteTheme("Over", "C:\\WINDOWS\\SYSTEM\\shell32.dll,8");
        m_window->OpenTheme(path);
        m_window->ApplyChanges();
        const auto before = std::filesystem::file_size(Host(path));
        m_prompt->Answer({PromptAnswer::Press(button, ticked)});
        m_picks = {std::nullopt};
        Control<QAction>("tbMain(2)")->trigger();
        QCOMPARE(m_prompt->Shown().back().text.substr(0, 50),
                 std::string("Are you sure you want to overwrite the Icon Theme:"));
        QCOMPARE(std::filesystem::file_size(Host(path)) != before, savedOver);
        QCOMPARE(!m_asked.empty(), askedForName);
        auto machine = OpenMachineFolder(MachineDir());
        QVERIFY(machine.ok());
        QCOMPARE(QString::number(GetRegDword((*machine)->Registry(), kSettings, "Dialog Overwrite")),
                 dialogOverwrite);
        if (askedForName) {
            QCOMPARE(m_asked.back().second, std::string("Over"));
        }
    }

    void quickSaveWithoutACurrentThemeIsSaveAs() {
        m_picks = {std::nullopt};
        m_window->SaveTheme();
        QCOMPARE(m_asked.back(), std::make_pair(Main::ThemeDialog::Save, std::string("Untitled")));
        QVERIFY(m_prompt->Shown().empty());
    }

    void deleteAsksThenRemovesTheWholeFolder() {
        const std::string path = WriteTheme("Gone", "C:\\WINDOWS\\SYSTEM\\shell32.dll,8");
        std::ofstream(Host(std::string(kLibrary) + "\\Gone\\notes.txt")) << "not part of the theme";
        m_window->OpenTheme(path);
        m_window->Themes().Refresh();
        Click(QStringLiteral("Gone"));
        m_prompt->Answer({PromptAnswer::Press(0)});  // Cancel
        QTest::keyClick(List(), Qt::Key_Delete);
        QVERIFY(m_prompt->Shown().back().text.find("the theme 'Gone'") != std::string::npos);
        QVERIFY(std::filesystem::exists(Host(path)));
        Click(QStringLiteral("Gone"));
        m_prompt->Answer({PromptAnswer::Press(1)});  // OK
        QVERIFY(m_window->State().applyEnabled);
        QVERIFY(m_window->Dispatch("Theme_Delete"));
        QVERIFY(!std::filesystem::exists(Host(std::string(kLibrary) + "\\Gone")));
        // Its icons, loaded and not applied, are gone with it: nothing is left to apply.
        QCOMPARE(MyComputer().Text(), std::string(kDefaultMyComputer));
        QVERIFY(!m_window->State().applyEnabled);
        QVERIFY(!m_window->State().themeLoaded);
        QVERIFY(std::filesystem::is_directory(Host(kLibrary)));
        QVERIFY(!Captions().contains(QStringLiteral("Gone")));
        // Nothing names the deleted theme any more.
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Glyphmoor"));
        QStringList file;
        for (QAction* action : Control<QMenu>("mnuFile")->actions()) {
            file << action->objectName();
        }
        QVERIFY(!file.contains(QStringLiteral("RecentTheme 1")));
        QCOMPARE(Stored(kSettings, "Current Theme"), std::string("Error"));
    }

    void aThemeOutsideAFolderOfItsOwnIsNeverDeleted() {
        const std::string loose = std::string(kLibrary) + "\\Loose.gmtheme";
        std::filesystem::create_directories(Host(kLibrary));
        std::ofstream(Host(loose)) << "[Desktop Icons]\n";
        m_window->Themes().Refresh();
        QVERIFY(!Captions().contains(QStringLiteral("Loose")));
        const auto themes = Captions().size();
        m_prompt->Answer({PromptAnswer::Press(1), PromptAnswer::Press(0)});
        m_window->DeleteTheme("Loose", loose);
        QVERIFY(m_prompt->Shown().back().text.find("was not deleted") != std::string::npos);
        QVERIFY(std::filesystem::exists(Host(loose)));
        QCOMPARE(Captions().size(), themes);
    }

    void thePopUpMenuChangesTheView() {
        const struct {
            const char* key;
            ThemesPage::View view;
            int iconSize;
        } cases[] = {
            {"Theme_VLarge", ThemesPage::View::LargeIcons, 32},
            {"Theme_VSmall", ThemesPage::View::SmallIcons, 16},
            {"Theme_VList", ThemesPage::View::List, 16},
            {"Theme_VDetails", ThemesPage::View::Details, 16},
        };
        for (const auto& c : cases) {
            m_window->Dispatch(c.view == ThemesPage::View::LargeIcons ? "Theme_VList" : "Theme_VLarge");
            QMenu menu;
            m_window->FillPopup(&menu, Main::PopupContext::Themes);
            QAction* item = menu.findChild<QAction*>(c.key);
            QVERIFY(item != nullptr);
            item->trigger();
            QCOMPARE(int(m_window->Themes().CurrentView()), int(c.view));
            QCOMPARE(List()->iconSize().width(), c.iconSize);
        }
    }

    void openingABundleUnpacksAndLoadsIt() {
        if (!BundlesBuilt()) {
            QSKIP("bundles are not part of this build");
        }
        const AppEnvironment app = InitEnvironment(m_machine->Env());
        const std::string lagoon = std::string(kLibrary) + "\\Lagoon\\Lagoon.gmtheme";
        QVERIFY(PackTheme(app, lagoon, Host("C:\\Sea.v2.zip")).ok());
        m_picks = {std::string("C:\\Sea.v2.zip")};
        Control<QAction>("mnuFile(0)")->trigger();
        // Unpacked, listed, loaded, not applied; where it goes is the bundle tests'.
        QCOMPARE(Captions().count(QStringLiteral("Lagoon")), 2);
        QCOMPARE(StoredMyComputer(), std::string(kDefaultMyComputer));
        QVERIFY(m_window->State().applyEnabled);
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Glyphmoor - C:\\Sea"));
        QCOMPARE(RecentThemes(m_machine->Registry()).front(), std::string("C:\\Sea.v2.zip"));
        // Opened again, Cancel at the question about a file there already stops and says so.
        m_prompt->Answer({PromptAnswer::Press(0)});
        m_window->OpenTheme("C:\\Sea.v2.zip");
        QVERIFY(m_prompt->Shown().back().text.find("was not opened") != std::string::npos);
    }

    void packageThemePacksTheCurrentTheme() {
        if (!BundlesBuilt()) {
            QSKIP("bundles are not part of this build");
        }
        // Nothing to package before a theme is opened or saved.
        QVERIFY(m_window->Dispatch("Theme_Package"));
        QVERIFY(m_asked.empty());
        m_window->OpenTheme(std::string(kLibrary) + "\\Dusk\\Dusk.gmtheme");
        m_picks = {std::string("C:\\Evening")};
        QVERIFY(m_window->Dispatch("Theme_Package"));
        QCOMPARE(m_asked.back(), std::make_pair(Main::ThemeDialog::SaveBundle, std::string("Dusk.zip")));
        QVERIFY(std::filesystem::is_regular_file(Host("C:\\Evening.zip")));
        QCOMPARE(m_prompt->Shown().back().text, std::string("The theme is packaged as C:\\Evening.zip."));
    }

    void slashTOpensTheThemeForPreviewOnly() {
        const std::string path = WriteTheme("Preview", "C:\\WINDOWS\\SYSTEM\\shell32.dll,12");
        NewWindow(ParseCommandLine("/t " + path));
        QCOMPARE(m_window->CurrentPage(), Page::IconsAndCursors);
        QCOMPARE(MyComputer().index, 12);
        QVERIFY(m_window->State().themeLoaded);
        QCOMPARE(StoredMyComputer(), std::string(kDefaultMyComputer));
    }
};

}  // namespace glyphmoor::test

QTEST_MAIN(glyphmoor::test::ThemesPageTest)
#include "ThemesPageTest.moc"
