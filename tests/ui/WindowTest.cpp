// The window on a fresh default machine: pages, the Change Icon dialog,
// renaming, restoring, applying and closing, with the machine's registry
// read back from its files afterwards. Screenshots of the pages go to
// $GLYPHMOOR_SCREENSHOT_DIR when it is set.
#include "WindowFixture.h"
#include "iconfiles/IconFixtures.h"
#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"
#include "icons/IconEditing.h"
#include "ui/about/frmAbout.h"
#include "ui/changeicon/ChangeIconHistory.h"
#include "ui/changeicon/frmChangeIcon.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/OpenMachine.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QTabBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>

#include <fstream>

namespace glyphmoor::test {
namespace {

constexpr const char* kShellIcons =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
constexpr const char* kWindowMetrics = "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics";
constexpr const char* kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";

// An icon library of `count` plain icons, written to the machine's C:\.
void WriteLibrary(const std::filesystem::path& file, int count) {
    const std::vector<cFileIcon> icons(static_cast<std::size_t>(count), MakeIcon({{32, 8}}));
    const auto bytes = BuildResourceOnlyPe(IconLibraryResources(icons, {}), PeLayout{});
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// The Change Icon dialog's parts, of a pointer to it.
template <typename Dialog>
IconGrid* Grid(const Dialog& dialog) {
    return dialog->template findChild<IconGrid*>(QStringLiteral("lstMain"));
}
template <typename Dialog>
QScrollBar* Scroll(const Dialog& dialog) {
    return dialog->template findChild<QScrollBar*>(QStringLiteral("Scroll"));
}
template <typename Dialog>
QPushButton* Ok(const Dialog& dialog) {
    return dialog->template findChild<QPushButton*>(QStringLiteral("cmdOK"));
}

bool HasPicture(const QIcon& icon) {
    const QImage image = icon.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

class WindowTest : public WindowFixture {
    Q_OBJECT

private:
    QListWidget* List(int group) { return m_window->Icons().List(group); }
    void Select(int group, std::string_view key) {
        m_window->ShowPage(Page::IconsAndCursors, group - 1);
        QListWidget* list = List(group);
        for (int row = 0; row < list->count(); ++row) {
            if (list->item(row)->data(Qt::UserRole).toString().toStdString() == key) {
                list->setCurrentRow(row);
                return;
            }
        }
        QFAIL("no such entry");
    }
    // The Icons & Cursors page's path label (the Themes page has one too).
    QString IconsPath() {
        return m_window->Icons()
            .findChild<QLabel*>(QStringLiteral("lblPath"))
            ->property("fullText")
            .toString();
    }
    // Gives "Run" icon 5 of its file through the Change Icon dialog.
    void ChangeRunIcon() {
        Select(2, "Run");
        WhenShown<frmChangeIcon>([](frmChangeIcon* dialog) {
            auto* grid = Grid(dialog);
            QTest::mouseClick(grid, Qt::LeftButton, {}, IconGrid::CellOrigin(5) + QPoint(16, 16));
            QTest::mouseClick(Ok(dialog), Qt::LeftButton);
        });
        QTest::mouseClick(Control<QPushButton>("cmdChange"), Qt::LeftButton);
        QVERIFY(m_window->State().rebuildPending);
    }

private slots:
    void init() {
        MakeMachine();
        OpenWindow();
    }
    void cleanup() { CloseAll(); }

    void theToolbarMenusAndPageBarAreInOrder() {
        QStringList captions;
        for (QAction* action : Control<QToolBar>("tbMain")->actions()) {
            captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        QCOMPARE(captions,
                 QStringList({"Open", "Save", "-", "Rebuild Icons", "Restore Icons", "-", "Add to Favorites",
                              "-", "Glyphmoor Web Site", "Additional Icon Themes", "Email Veltrane", "-",
                              "Help", "About Glyphmoor", "-", "Exit"}));
        QStringList menus;
        for (QAction* menu : m_window->menuBar()->actions()) {
            menus << menu->text();
        }
        QCOMPARE(menus, QStringList({"&File", "&Tools", "&Favorites", "&Help"}));
        QCOMPARE(Control<QTreeWidget>("vMenu")->topLevelItemCount(), 4);
        QCOMPARE(Control<QTreeWidget>("vMenu")->topLevelItem(1)->text(0), QStringLiteral("Icons & Cursors"));
        QCOMPARE(Control<QTreeWidget>("vMenu")->topLevelItem(1)->childCount(), 7);
        QVERIFY(Control<QAction>("mnuTools(0)")->isEnabled());
        QVERIFY(Control<QAction>("mnuTools(1)")->isEnabled());
    }

    void aboutOpensTheAboutBox() {
        QVERIFY(Control<QAction>("tbMain(14)")->isEnabled());
        bool shown = false;
        WhenShown<frmAbout>([&shown](frmAbout* about) {
            shown = true;
            QTest::keyClick(about, Qt::Key_Escape);
        });
        Control<QAction>("mnuHelp(4)")->trigger();
        QVERIFY(shown);
    }

    void everyControlAndCommandSaysWhatItIs() {
        int controls = 0;
        for (QWidget* control : m_window->findChildren<QWidget*>()) {
            const QString name = control->objectName();
            // Qt's own parts of a control (a tab bar's scroll buttons) are the control's.
            if (name.isEmpty() || name.startsWith(QStringLiteral("qt_")) ||
                qobject_cast<QMenu*>(control) != nullptr ||
                qobject_cast<QTabBar*>(control->parentWidget()) != nullptr) {
                continue;
            }
            ++controls;
            QVERIFY2(!control->whatsThis().isEmpty(), qPrintable(name));
        }
        QVERIFY(controls > 30);
        QList<QAction*> commands = Control<QToolBar>("tbMain")->actions();
        for (QMenu* menu : m_window->menuBar()->findChildren<QMenu*>()) {
            commands += menu->actions();
        }
        for (QAction* command : commands) {
            if (!command->isSeparator() && command->menu() == nullptr) {
                QVERIFY2(!command->whatsThis().isEmpty(), qPrintable(command->objectName()));
            }
        }
    }

    void helpOpensTheContentsAndF1ThePagesTopic() {
        QTest::mouseClick(Control<QPushButton>("cmdHelp"), Qt::LeftButton);
        auto* help = m_window->findChild<HelpWindow*>();
        QVERIFY(help != nullptr && help->isVisible());
        QCOMPARE(help->Browser()->source().fileName(), QStringLiteral("index.html"));
        m_window->ShowPage(Page::IconsAndCursors, 0);
        m_window->activateWindow();
        QTest::keyClick(Control<QTreeWidget>("vMenu"), Qt::Key_F1);
        QCOMPARE(help->Browser()->source().fileName(), QStringLiteral("icons-and-cursors.html"));
        help->close();
    }

    void thePopUpMenusCarryTheirKeys() {
        QMenu menu;
        m_window->FillPopup(&menu, Main::PopupContext::Themes);
        QStringList keys;
        for (QAction* action : menu.actions()) {
            keys << action->objectName();
        }
        QCOMPARE(keys,
                 QStringList({"Theme_Open", "Theme_Apply", "Sep1", "Theme_AddFav", "Sep2", "Theme_Package",
                              "Sep3", "Theme_Delete", "Sep4", "Theme_View", "Sep5", "Theme_Refresh"}));
        QCOMPARE(menu.actions().at(9)->menu()->actions().at(3)->objectName(),
                 QStringLiteral("Theme_VDetails"));
    }

    void choosingAPageInThePageBarShowsIt_data() {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("item");
        QTest::addColumn<QString>("container");
        QTest::newRow("Themes") << 0 << 0 << "picContMain";
        QTest::newRow("Desktop") << 1 << 0 << "picContSub1";
        QTest::newRow("Cursors") << 1 << 6 << "picContSub1";
        QTest::newRow("Folders") << 2 << 0 << "picContSub2";
        QTest::newRow("Bootup") << 3 << 1 << "picContSub3";
    }
    void choosingAPageInThePageBarShowsIt() {
        QFETCH(int, group);
        QFETCH(int, item);
        QFETCH(QString, container);
        auto* vMenu = Control<QTreeWidget>("vMenu");
        QTreeWidgetItem* entry = vMenu->topLevelItem(group)->child(item);
        const QRect at = vMenu->visualItemRect(entry);
        QTest::mouseClick(vMenu->viewport(), Qt::LeftButton, {}, at.center());
        QVERIFY(m_window->findChild<QWidget*>(container)->isVisible());
        if (container == QStringLiteral("picContSub1")) {
            QCOMPARE(m_window->Icons().ActiveGroup(), item + 1);
        }
        Screenshot(*m_window, QStringLiteral("page-") + QString::fromUtf8(QTest::currentDataTag()).toLower());
    }

    void everyCatalogueEntryIsDrawn() {
        m_window->ShowPage(Page::IconsAndCursors);
        int entries = 0;
        for (int group = 1; group <= 7; ++group) {
            QListWidget* list = List(group);
            QCOMPARE(static_cast<std::size_t>(list->count()), m_window->Catalogue().Group(group).Count());
            for (int row = 0; row < list->count(); ++row) {
                QVERIFY2(HasPicture(list->item(row)->icon()), qPrintable(list->item(row)->text()));
                ++entries;
            }
        }
        QVERIFY(entries > 70);
        // The pointers are the program's own pointer resources, each its own picture.
        const auto picture = [this](int row) { return List(7)->item(row)->icon().pixmap(32, 32).toImage(); };
        QVERIFY(picture(0) != picture(3));
        QVERIFY(picture(3) != picture(5));
    }

    void changingAnIconThroughTheDialogIsWrittenByApply() {
        Select(2, "Run");
        QCOMPARE(IconsPath(), QStringLiteral("File name: C:\\WINDOWS\\SYSTEM\\shell32.dll,24"));
        WhenShown<frmChangeIcon>([this](frmChangeIcon* dialog) {
            auto* grid = Grid(dialog);
            Screenshot(*dialog, QStringLiteral("change-icon"));
            QCOMPARE(grid->Selected(), 24);
            // Column 6 lies within the eight that show: no scrolling.
            QCOMPARE(Scroll(dialog)->value(), 0);
            QTest::mouseClick(grid, Qt::LeftButton, {}, IconGrid::CellOrigin(5) + QPoint(16, 16));
            QCOMPARE(grid->Selected(), 5);
            QTest::mouseClick(Ok(dialog), Qt::LeftButton);
        });
        QTest::mouseClick(Control<QPushButton>("cmdChange"), Qt::LeftButton);
        QVERIFY(m_window->State().rebuildPending);
        QCOMPARE(IconsPath(), QStringLiteral("File name: C:\\WINDOWS\\SYSTEM\\shell32.dll,5"));
        Apply();
        QCOMPARE(Stored(kShellIcons, "24"), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,5"));
        QCOMPARE(Stored(std::string(kChangeIconsPath), "0"), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll"));
        // The icon cache was rebuilt after the apply, and the shell-notified notice shown.
        QCOMPARE(Stored(kWindowMetrics, "Shell Icon Size"), std::string("32"));
        QVERIFY(
            m_prompt->Shown().back().text.starts_with("Glyphmoor has notified Windows 98 of your changes."));
        QVERIFY(!m_window->State().rebuildPending);
        Screenshot(*m_window, QStringLiteral("changed-run"));
    }

    // Tools, Undo all: the list of what returns, then the machine as it was,
    // the lists read again; the status line names the machine.
    void undoAllPutsTheMachineBack() {
        QVERIFY(
            Control<QLabel>("lblMachine")->text().contains(QString::fromStdString(MachineDir().string())));
        const std::string before = Stored(kShellIcons, "24");
        Select(2, "Run");
        const auto run = static_cast<std::size_t>(List(2)->currentRow());
        QVERIFY(ChangeIcon(m_window->Catalogue(), m_window->State(), 2, run,
                           {"C:\\WINDOWS\\SYSTEM\\shell32.dll", 7}));
        m_window->ApplyChanges();
        QCOMPARE(Stored(kShellIcons, "24"), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,7"));

        int listed = 0;
        m_window->SetUndoAnswer([&listed](QDialog& dialog) {
            listed = dialog.findChild<QListWidget*>(QStringLiteral("lstUndo"))->count();
            return true;
        });
        QVERIFY(m_window->Dispatch("mnuTools(6)"));
        QVERIFY(listed >= 2);  // the icon and the lever of the icon-cache rebuild
        QCOMPARE(Stored(kShellIcons, "24"), before);
        QCOMPARE(Stored(kWindowMetrics, "Shell Icon Size"), std::string("Error"));
        QCOMPARE(m_window->Catalogue().Find("Start Icons", "Run")->Current().Text(),
                 std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,24"));
        // A change made after the undo, in the same window, has its way back too.
        QVERIFY(ChangeIcon(m_window->Catalogue(), m_window->State(), 2, run,
                           {"C:\\WINDOWS\\SYSTEM\\shell32.dll", 8}));
        m_window->ApplyChanges();
        QVERIFY(m_window->Dispatch("mnuTools(6)"));
        QCOMPARE(Stored(kShellIcons, "24"), before);
        // Nothing left to undo: a notice, no list.
        listed = -1;
        QVERIFY(m_window->Dispatch("mnuTools(6)"));
        QCOMPARE(listed, -1);
        QVERIFY(m_prompt->Shown().back().text.find("nothing to undo") != std::string::npos);
    }

    void choosingTheSameIconChangesNothing() {
        Select(2, "Find");
        WhenShown<frmChangeIcon>(
            [](frmChangeIcon* dialog) { QTest::mouseClick(Ok(dialog), Qt::LeftButton); });
        QTest::mouseClick(Control<QPushButton>("cmdChange"), Qt::LeftButton);
        QVERIFY(!Control<QPushButton>("cmdApply")->isEnabled());
        QVERIFY(!m_window->State().groupChanged[1]);
    }

    void renamingTheRecycleBinRenamesBothEntries() {
        Select(1, "Recycle Bin (full)");
        QVERIFY(Control<QPushButton>("cmdRename")->isEnabled());
        WhenShown<QDialog>([this](QDialog* dialog) {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("txtName"));
            QCOMPARE(name->text(), QStringLiteral("Recycle Bin"));
            QCOMPARE(name->selectedText(), QStringLiteral("Recycle Bin"));
            // An empty name is refused and the dialog stays.
            name->clear();
            QTest::mouseClick(Ok(dialog), Qt::LeftButton);
            QVERIFY(dialog->isVisible());
            QCOMPARE(m_prompt->Shown().back().text,
                     std::string("You must provide a name for your system icon."));
            QTest::keyClicks(name, QStringLiteral("Trash"));
            QTest::mouseClick(Ok(dialog), Qt::LeftButton);
        });
        QTest::mouseClick(Control<QPushButton>("cmdRename"), Qt::LeftButton);
        QStringList names;
        for (int row = 0; row < List(1)->count(); ++row) {
            names << List(1)->item(row)->text();
        }
        QVERIFY(names.contains(QStringLiteral("Trash (empty)")));
        QVERIFY(names.contains(QStringLiteral("Trash (full)")));
        Apply();
        QCOMPARE(
            Stored("HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{645FF040-5081-101B-9F08-00AA002F954E}", ""),
            std::string("Trash"));
    }

    // An icon is written with the icon cache rebuilt (with the notice silenced,
    // the apply step itself clears the pending rebuild); a pointer alone is not.
    void aPointerTakesTheChosenFileWithoutARebuild() {
        SetRegDword(m_machine->Registry(), kSettings, "Dialog Rebuild", 1);
        ChangeRunIcon();
        Apply();
        QCOMPARE(Stored(kWindowMetrics, "Shell Icon Size"), std::string("32"));
        QVERIFY(!m_window->State().rebuildPending);

        DeleteRegValue(m_machine->Registry(), kWindowMetrics, "Shell Icon Size");
        Select(7, "Busy");
        QVERIFY(!Control<QPushButton>("cmdRename")->isEnabled());
        m_window->Icons().SetCursorPicker(
            [](const std::string&) { return std::string("C:\\WINDOWS\\Cursors\\Help.cur"); });
        QTest::mouseClick(Control<QPushButton>("cmdChange"), Qt::LeftButton);
        QVERIFY(!m_window->State().rebuildPending);
        QVERIFY(HasPicture(List(7)->currentItem()->icon()));
        Apply();
        QCOMPARE(Stored("HKEY_CURRENT_USER\\Control Panel\\Cursors", "Wait"),
                 std::string("C:\\WINDOWS\\Cursors\\Help.cur"));
        QCOMPARE(Stored(kWindowMetrics, "Shell Icon Size"), std::string("Error"));
    }

    void restoreAllIconsAsksThenClearsTheTheme() {
        SetRegString(m_machine->Registry(), kSettings, "Current Theme", "C:\\Themes\\Blue.gmtheme");
        OpenWindow();
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Glyphmoor - C:\\Themes\\Blue"));
        // The current theme is the first recent theme, listed after the File menu's
        // separator and before "&Exit".
        QStringList file;
        for (QAction* action : Control<QMenu>("mnuFile")->actions()) {
            file << (action->isSeparator() ? QStringLiteral("-") : action->objectName());
        }
        QCOMPARE(file, QStringList({"mnuFile(0)", "-", "mnuFile(2)", "mnuFile(3)", "-", "RecentTheme 1", "-",
                                    "mnuFile(5)"}));
        QVERIFY(Control<QAction>("RecentTheme 1")->isEnabled());
        m_prompt->Answer({PromptAnswer::Press(0)});  // Cancel
        Control<QAction>("mnuTools(1)")->trigger();
        QVERIFY(!Control<QPushButton>("cmdApply")->isEnabled());
        m_prompt->Answer({PromptAnswer::Press(1)});  // OK
        Control<QAction>("mnuTools(1)")->trigger();
        QVERIFY(m_prompt->Shown().back().text.starts_with("Restoring all your Windows 98 system icons"));
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Glyphmoor"));
        QCOMPARE(m_window->CurrentPage(), Page::IconsAndCursors);
        Apply();
        QCOMPARE(Stored(kShellIcons, "19"), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,19"));
        QCOMPARE(Stored(kSettings, "Current Theme"), std::string(""));
    }

    void anEntryThatCannotBeDrawnSaysSoInThePathLabel_data() {
        QTest::addColumn<QString>("stored");
        QTest::newRow("missing file") << "C:\\WINDOWS\\SYSTEM\\nothere.dll,3";
        QTest::newRow("no such icon") << "C:\\WINDOWS\\SYSTEM\\shell32.dll,9999";
    }
    void anEntryThatCannotBeDrawnSaysSoInThePathLabel() {
        QFETCH(QString, stored);
        SetRegString(m_machine->Registry(), kShellIcons, "24", stored.toStdString());
        Select(2, "Run");
        QCOMPARE(List(2)->currentItem()->text(), QStringLiteral("Run..."));
        QCOMPARE(IconsPath(), QString::fromUtf8(kMissingGraphicText.data()));
        QVERIFY(Control<QPushButton>("cmdChange")->isEnabled());
    }

    void longWorkShowsTheBusyPointer() {
        QList<Qt::CursorShape> seen;
        connect(List(1)->model(), &QAbstractItemModel::rowsInserted, this, [&seen] {
            const QCursor* cursor = QGuiApplication::overrideCursor();
            seen << (cursor != nullptr ? cursor->shape() : Qt::ArrowCursor);
        });
        m_window->ShowPage(Page::IconsAndCursors, 0);  // the first catalogue build
        QVERIFY(!seen.isEmpty());
        QVERIFY(seen.count(Qt::WaitCursor) == seen.size());
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);

        seen.clear();
        ChangeRunIcon();
        Apply();  // the rebuild draws the lists anew
        QVERIFY(!seen.isEmpty());
        QVERIFY(seen.count(Qt::WaitCursor) == seen.size());
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }

    void aMachineThatCannotBeOpenedIsShownInADialog() {
        std::filesystem::create_directories(m_dir->Path() / "empty");
        m_dir->Write("bad/system.reg", "REGEDIT4\n");
        for (const auto& [folder, says] :
             {std::pair{"absent", "does not exist"}, std::pair{"empty", "is not a machine folder"},
              std::pair{"bad", "system.reg:1: not a Wine registry file"}}) {
            QStringList told;
            const auto machine = OpenWindowMachine((m_dir->Path() / folder).string(),
                                                   [&told](const QString& text) { told << text; });
            QVERIFY(machine == nullptr);
            QCOMPARE(told.size(), 1);
            QVERIFY2(told.front().contains(QString(says)), qPrintable(told.front()));
        }
    }

    // The page of each start is the page tests'; the stored place is taken
    // only where "Positions" is 1, whatever the start.
    void startUpTakesThePageAndThePosition() {
        SetRegString(m_machine->Registry(), kSettings, "Left", "37");
        SetRegString(m_machine->Registry(), kSettings, "Top", "41");
        for (const auto& [commandLine, positions, page] :
             {std::tuple{"", 10, Page::Themes}, std::tuple{"/f C:\\WINDOWS", 1, Page::Folders}}) {
            SetRegDword(m_machine->Registry(), kSettings, "Positions", positions);
            m_window.reset();
            m_window = std::make_unique<Main>(*m_machine, ParseCommandLine(commandLine), m_prompt.get());
            QCOMPARE(int(m_window->CurrentPage()), int(page));
            QCOMPARE(m_window->pos() == QPoint(37, 41), positions == 1);
        }
    }

    void okAppliesWhatIsPendingThenCloses() {
        SetRegString(m_machine->Registry(), kShellIcons, "5", "C:\\f.ico,1");
        m_window->ShowPage(Page::IconsAndCursors, 3);
        List(4)->setCurrentRow(0);
        QTest::mouseClick(Control<QPushButton>("cmdDefault"), Qt::LeftButton);
        QTest::mouseClick(Control<QPushButton>("cmdOK"), Qt::LeftButton);
        QVERIFY(!m_window->isVisible());
        for (const PromptRequest& shown : m_prompt->Shown()) {
            QVERIFY(shown.text != kSaveChangesQuestion);
        }
        QCOMPARE(Stored(kShellIcons, "5"), std::string("C:\\WINDOWS\\SYSTEM\\shell32.dll,5"));
    }

    void closingWithChangesAsks_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("Cancel") << 0 << false << "Error";
        QTest::newRow("No") << 1 << true << "Error";
        QTest::newRow("Yes") << 2 << true << "C:\\x.ico,0";
    }
    void closingWithChangesAsks() {
        QFETCH(int, answer);
        QFETCH(bool, closed);
        QFETCH(QString, stored);
        m_window->ShowPage(Page::IconsAndCursors, 1);
        ChangeIcon(m_window->Catalogue(), m_window->State(), 2, 0, {"C:\\x.ico", 0});
        m_prompt->Answer({PromptAnswer::Press(answer)});
        m_window->close();
        QCOMPARE(m_prompt->Shown().front().text,
                 std::string("Would you like to save your changes before closing?"));
        QCOMPARE(!m_window->isVisible(), closed);
        QCOMPARE(QString::fromStdString(Stored(kShellIcons, "19")), stored);
        if (closed) {
            QCOMPARE(QString::fromStdString(Stored(kSettings, "Left")), QString::number(m_window->x()));
        }
    }
};

// The Change Icon dialog on libraries of its own.
class ChangeIconTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TempMachine> m_folder;
    std::unique_ptr<Machine> m_machine;
    QStringList m_messages;

    std::unique_ptr<frmChangeIcon> Dialog() {
        auto dialog = std::make_unique<frmChangeIcon>(m_machine->Registry(), m_machine->Env());
        dialog->SetStockMessage([this](const QString& text) { m_messages << text; });
        return dialog;
    }

private slots:
    void init() {
        m_folder = std::make_unique<TempMachine>();
        m_machine = m_folder->Open();
        m_messages.clear();
        for (int count : {1, 32, 33, 100}) {
            WriteLibrary(m_folder->Dir() / "drive_c" / ("lib" + std::to_string(count) + ".dll"), count);
        }
        std::ofstream(m_folder->Dir() / "drive_c" / "none.dll") << "not a library";
    }

    // OK waits for a choice unless the file has one icon.
    void theScrollBarIsForMoreThanThirtyTwo() {
        for (const int count : {1, 32, 33}) {
            auto dialog = Dialog();
            dialog->Prepare("C:\\lib" + std::to_string(count) + ".dll", -1);
            QCOMPARE(Scroll(dialog)->isEnabled(), count > 32);
            QCOMPARE(Ok(dialog)->isEnabled(), count == 1);
        }
        QVERIFY(m_messages.isEmpty());
    }

    void aPreselectedIconIsInSightInEveryColumn() {
        auto dialog = Dialog();
        dialog->show();
        auto* scroll = Scroll(dialog);
        for (int index = 0; index < 100; ++index) {
            dialog->Prepare("C:\\lib100.dll", index);
            const int left = IconGrid::CellOrigin(index).x() - scroll->value();
            QVERIFY2(left >= 0 && left + 32 <= kGridVisibleWidth,
                     qPrintable(QStringLiteral("icon %1 at %2").arg(index).arg(left)));
        }
        // From the start, a far icon is scrolled to the last visible column.
        dialog->Prepare("C:\\lib100.dll", 0);
        dialog->Prepare("C:\\lib100.dll", 61);  // column 15, row 1
        QCOMPARE(Grid(dialog)->Selected(), 61);
        QCOMPARE(scroll->value(), 38 * 16 - kGridVisibleWidth);
        QCOMPARE(Grid(dialog)->x(), -(38 * 16 - kGridVisibleWidth));
    }

    // A typed file is listed on Return, when the box is left or when typing
    // pauses; until then OK does not take it.
    void aTypedFileIsListedBeforeOkTakesIt_data() {
        QTest::addColumn<QString>("how");
        QTest::newRow("Return") << "Return";
        QTest::newRow("leaving the box") << "leave";
        QTest::newRow("a pause") << "pause";
    }
    void aTypedFileIsListedBeforeOkTakesIt() {
        QFETCH(QString, how);
        auto dialog = Dialog();
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        dialog->Prepare("C:\\lib100.dll", 40);
        auto* ok = Ok(dialog);
        auto* box = dialog->findChild<QComboBox*>(QStringLiteral("txtFilename"));
        QVERIFY(ok->isEnabled());
        box->lineEdit()->setFocus();
        box->lineEdit()->selectAll();
        QTest::keyClicks(box->lineEdit(), QStringLiteral("C:\\lib33.dll"));
        QVERIFY(!ok->isEnabled());  // the list is still lib100's
        QTest::mouseClick(ok, Qt::LeftButton);
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->Source()->Count(), 100);
        if (how == QStringLiteral("Return")) {
            QTest::keyClick(box->lineEdit(), Qt::Key_Return);
            QCOMPARE(dialog->Source()->Count(), 33);
        } else if (how == QStringLiteral("leave")) {
            QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
            QApplication::sendEvent(box->lineEdit(), &left);
            QCOMPARE(dialog->Source()->Count(), 33);
        }
        QTRY_COMPARE_WITH_TIMEOUT(dialog->Source()->Count(), 33, 3 * frmChangeIcon::kTypingPauseMs);
        QCOMPARE(Grid(dialog)->Selected(), -1);
        QVERIFY(!ok->isEnabled());
        Grid(dialog)->Select(2);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(dialog->ChosenFile(), std::string("C:\\lib33.dll"));
        QCOMPARE(dialog->ChosenIndex(), 2);
        QVERIFY(m_messages.isEmpty());
    }

    void openingALibraryShowsTheBusyPointer() {
        auto dialog = Dialog();
        QList<Qt::CursorShape> seen;
        connect(Scroll(dialog), &QScrollBar::rangeChanged, this, [&seen] {
            const QCursor* cursor = QGuiApplication::overrideCursor();
            seen << (cursor != nullptr ? cursor->shape() : Qt::ArrowCursor);
        });
        dialog->Prepare("C:\\lib100.dll", 0);
        QCOMPARE(seen, QList<Qt::CursorShape>({Qt::WaitCursor}));
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }

    // Four icons a column: the keys stop at the grid's edges and the last icon.
    void arrowKeysMoveTheSelection() {
        const struct {
            int from;
            Qt::Key key;
            int to;
        } cases[] = {
            {5, Qt::Key_Down, 6},  {5, Qt::Key_Up, 4},   {4, Qt::Key_Up, 4},   {7, Qt::Key_Down, 7},
            {5, Qt::Key_Right, 9}, {5, Qt::Key_Left, 1}, {1, Qt::Key_Left, 1}, {97, Qt::Key_Right, 97},
        };
        for (const auto& c : cases) {
            auto dialog = Dialog();
            dialog->show();
            dialog->Prepare("C:\\lib100.dll", c.from);
            auto* grid = Grid(dialog);
            grid->setFocus();
            QTest::keyClick(grid, c.key);
            QCOMPARE(grid->Selected(), c.to);
            // The selection stays in sight.
            const int left = IconGrid::CellOrigin(c.to).x() - Scroll(dialog)->value();
            QVERIFY(left >= 0 && left + 32 <= kGridVisibleWidth);
        }
    }

    void filesWithoutIconsAreReported() {
        for (const char* file : {"C:\\nothere.dll", "C:\\none.dll"}) {
            auto dialog = Dialog();
            dialog->Prepare(file, 0);
            QVERIFY(!Ok(dialog)->isEnabled());
        }
        QCOMPARE(m_messages,
                 QStringList({"File not found \"C:\\nothere.dll\"", "No Icons found in \"C:\\none.dll\"."}));
    }

    void browsingListsTheChosenFile() {
        auto dialog = Dialog();
        dialog->Prepare("C:\\lib1.dll", 0);
        dialog->SetFilePicker([] { return std::string("C:\\lib33.dll"); });
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdBrowse")), Qt::LeftButton);
        QCOMPARE(dialog->ChosenFile(), std::string("C:\\lib33.dll"));
        QVERIFY(Scroll(dialog)->isEnabled());
        QVERIFY(!Ok(dialog)->isEnabled());
    }

    void aLargeLibraryDecodesOnlyWhatIsSeen() {
        WriteLibrary(m_folder->Dir() / "drive_c" / "big.dll", 400);
        auto dialog = Dialog();
        dialog->show();
        dialog->Prepare("C:\\big.dll", 0);
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        QCoreApplication::processEvents();
        QCOMPARE(dialog->Source()->Count(), 400);
        QVERIFY(dialog->Source()->Decoded() > 0);
        QVERIFY2(dialog->Source()->Decoded() <= 40, qPrintable(QString::number(dialog->Source()->Decoded())));
    }

    void doubleClickActsAsOkAndKeepsTheHistory() {
        for (int i = 0; i < 16; ++i) {
            SetRegString(m_machine->Registry(), kChangeIconsPath, std::to_string(i),
                         "C:\\old" + std::to_string(i) + ".dll");
        }
        SetRegString(m_machine->Registry(), kChangeIconsPath, "5", "c:\\LIB32.dll");
        auto dialog = Dialog();
        dialog->show();
        dialog->Prepare("C:\\lib32.dll", 0);
        auto* grid = Grid(dialog);
        QTest::mouseDClick(grid, Qt::LeftButton, {}, IconGrid::CellOrigin(9) + QPoint(5, 5));
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(dialog->ChosenIndex(), 9);
        const auto history = ReadChangeIconHistory(m_machine->Registry());
        QCOMPARE(history.size(), std::size_t{16});
        QCOMPARE(history[0], std::string("C:\\lib32.dll"));
        // The same file in another spelling moved up; the oldest dropped out.
        QCOMPARE(history[5], std::string("C:\\old4.dll"));
        QCOMPARE(history[15], std::string("C:\\old15.dll"));
        QCOMPARE(GetRegString(m_machine->Registry(), kChangeIconsPath, "16"), std::string("Error"));
    }
};

}  // namespace glyphmoor::test

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    int status = 0;
    {
        glyphmoor::test::WindowTest window;
        status |= QTest::qExec(&window, argc, argv);
    }
    {
        glyphmoor::test::ChangeIconTest changeIcon;
        status |= QTest::qExec(&changeIcon, argc, argv);
    }
    return status;
}

#include "WindowTest.moc"
