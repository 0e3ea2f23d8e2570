// The Folders page on a fresh default machine, driven through tvExplorer:
// drives first, folders opened on demand, icons given and taken away with the
// files read back, "/f FOLDER", and a folder of thousands.
#include "WindowFixture.h"
#include "ui/changeicon/frmChangeIcon.h"
#include "ui/folders/FolderTreeModel.h"
#include "ui/folders/FoldersPage.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QStatusBar>
#include <QTreeView>

#include <filesystem>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

QImage Picture(const QModelIndex& index) {
    return index.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
}

}  // namespace

class FoldersPageTest : public WindowFixture {
    Q_OBJECT

private:
    void Open(const std::string& commandLine = {}) { OpenWindow(ParseCommandLine(commandLine)); }
    FoldersPage& Page() { return m_window->Folders(); }
    QTreeView* Tree() { return Page().Tree(); }
    FolderTreeModel& Model() { return Page().Model(); }
    std::optional<std::string> Read(std::string_view windowsPath) const {
        return FileBytes(Host(windowsPath));
    }
    QString Label() { return Control<QLabel>("lblFolder")->text(); }
    void Click(const char* button) { QTest::mouseClick(Control<QPushButton>(button), Qt::LeftButton); }
    // Clicks an item of the tree, as a user selects it.
    void ClickItem(const QModelIndex& index) {
        Tree()->scrollTo(index);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, Tree()->visualRect(index).center());
        QCOMPARE(Tree()->currentIndex(), index);
    }
    // Opens a folder's branch by its expander, from the keyboard.
    QModelIndex OpenChild(const QModelIndex& parent, const char* name) {
        ClickItem(parent);
        QTest::keyClick(Tree(), Qt::Key_Right);
        for (int row = 0; row < Model().rowCount(parent); ++row) {
            const QModelIndex child = Model().index(row, 0, parent);
            if (child.data().toString().compare(QString::fromUtf8(name), Qt::CaseInsensitive) == 0) {
                return child;
            }
        }
        return {};
    }
    // Gives the selected item icon `index` of the dialog's file.
    void ChangeTo(int index) {
        WhenShown<frmChangeIcon>([index](frmChangeIcon* dialog) {
            auto* grid = dialog->findChild<IconGrid*>(QStringLiteral("lstMain"));
            QTest::mouseClick(grid, Qt::LeftButton, {}, IconGrid::CellOrigin(index) + QPoint(16, 16));
            QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
        });
        Click("cmdChangeF");
    }

private slots:
    void init() { MakeMachine(); }
    void cleanup() { CloseAll(); }

    void drivesFirstAndFoldersListedWhenOpened() {
        Open();
        m_window->ShowPage(Page::Folders);
        QCOMPARE(Model().rowCount(), 1);
        const QModelIndex c = Model().index(0, 0);
        QCOMPARE(c.data().toString(), QStringLiteral("C:"));
        QVERIFY(Model().hasChildren(c));
        QCOMPARE(Model().rowCount(c), 0);
        QVERIFY(!Picture(c).isNull());
        const QModelIndex windows = OpenChild(c, "WINDOWS");
        QVERIFY(windows.isValid());
        QVERIFY(Tree()->isExpanded(c));
        QStringList names;
        for (int row = 0; row < Model().rowCount(c); ++row) {
            names << Model().index(row, 0, c).data().toString();
        }
        QVERIFY2(names.contains(QStringLiteral("Program Files")), qPrintable(names.join(',')));
        ClickItem(windows);
        QCOMPARE(Label(), QStringLiteral("C:\\WINDOWS\nWindows Default Icon"));
        Screenshot(*m_window, QStringLiteral("folders"));
    }

    void aFolderGetsAnIconAndGivesItBack() {
        Open();
        m_window->ShowPage(Page::Folders);
        const QModelIndex docs = OpenChild(Model().index(0, 0), "My Documents");
        ClickItem(docs);
        const QImage before = Picture(docs);
        ChangeTo(5);
        const std::string shell32 = m_machine->Env().SystemDirectory() + "\\shell32.dll";
        QCOMPARE(Read("C:\\My Documents\\desktop.ini"),
                 "[.ShellClassInfo]\r\nIconFile=" + shell32 + "\r\nIconIndex=5\r\n");
        QCOMPARE(Label(), QString::fromStdString("C:\\My Documents\n" + shell32 + ",5"));
        QVERIFY(Picture(docs) != before);
        Screenshot(*m_window, QStringLiteral("folders-custom"));

        m_prompt->Answer({PromptAnswer::Press(0)});  // Cancel
        Click("cmdDefaultF");
        QVERIFY(Read("C:\\My Documents\\desktop.ini").has_value());
        m_prompt->Answer({PromptAnswer::Press(1)});  // OK
        Click("cmdDefaultF");
        QCOMPARE(m_prompt->Shown().size(), std::size_t{2});
        QVERIFY(!fs::exists(Host("C:\\My Documents\\desktop.ini")));
        QCOMPARE(Label(), QStringLiteral("C:\\My Documents\nWindows Default Icon"));
        QCOMPARE(Picture(docs), before);
    }

    void aDriveGetsAnIconAndGivesItBack() {
        Open();
        m_window->ShowPage(Page::Folders);
        const QModelIndex c = Model().index(0, 0);
        ClickItem(c);
        m_prompt->Answer({PromptAnswer::Press(0)});
        Click("cmdDefaultF");
        QVERIFY(m_prompt->Shown().back().text.starts_with("You must select a customised folder"));
        ChangeTo(2);
        const std::string shell32 = m_machine->Env().SystemDirectory() + "\\shell32.dll";
        QCOMPARE(Read("C:\\autorun.inf"), "[AUTORUN]\r\nIcon=" + shell32 + ",2\r\n");
        m_prompt->Answer({PromptAnswer::Press(1)});
        Click("cmdDefaultF");
        QVERIFY(m_prompt->Shown().back().text.find("'autorun.inf'") != std::string::npos);
        QVERIFY(!fs::exists(Host("C:\\autorun.inf")));
    }

    void startedWithAFolder_data() {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QString>("selected");
        QTest::addColumn<bool>("notice");
        QTest::newRow("existing") << "/f c:\\windows\\system"
                                  << "C:\\WINDOWS\\SYSTEM" << false;
        QTest::newRow("missing") << "/f C:\\Windows\\Nowhere\\Deeper"
                                 << "C:\\WINDOWS" << true;
        QTest::newRow("drive") << "/f C:\\"
                               << "C:\\" << false;
    }
    void startedWithAFolder() {
        QFETCH(QString, commandLine);
        QFETCH(QString, selected);
        QFETCH(bool, notice);
        Open(commandLine.toStdString());
        QCOMPARE(int(m_window->CurrentPage()), int(Page::Folders));
        const auto item = Page().SelectedItem();
        QVERIFY(item.has_value());
        QCOMPARE(QString::fromStdString(item->path), selected);
        for (QModelIndex up = Tree()->currentIndex().parent(); up.isValid(); up = up.parent()) {
            QVERIFY(Tree()->isExpanded(up));
        }
        const QString message = m_window->statusBar()->currentMessage();
        QCOMPARE(message.contains(QStringLiteral("does not exist")), notice);
    }

    void thousandsOfFoldersOpenWithoutDrawingThemAll() {
        constexpr int kCount = 3000;
        for (int i = 0; i < kCount; ++i) {
            fs::create_directories(Host("C:\\Many") / ("Folder " + std::to_string(i)));
        }
        Open("/f C:\\Many");
        QElapsedTimer timer;
        timer.start();
        QTest::keyClick(Tree(), Qt::Key_Right);
        QCoreApplication::processEvents();
        const qint64 opened = timer.elapsed();
        const QModelIndex many = Tree()->currentIndex();
        QCOMPARE(Model().rowCount(many), kCount);
        qInfo("%d subfolders listed and shown in %lld ms; %d pictures drawn", kCount, opened,
              Model().PicturesDrawn());
        QVERIFY(Model().PicturesDrawn() < 200);
    }

    void aFolderThatGoesIsShownWithoutSubfolders() {
        fs::create_directories(Host("C:\\Gone\\Soon"));
        Open("/f C:\\Gone");
        const QModelIndex gone = Tree()->currentIndex();
        fs::remove_all(Host("C:\\Gone"));
        QTest::keyClick(Tree(), Qt::Key_Right);
        QCOMPARE(Model().rowCount(gone), 0);
        QVERIFY(!Model().hasChildren(gone));
        QVERIFY(gone.data(Qt::ToolTipRole).toString().contains(QStringLiteral("Cannot list")));
    }
};

}  // namespace glyphmoor::test

QTEST_MAIN(glyphmoor::test::FoldersPageTest)
#include "FoldersPageTest.moc"
