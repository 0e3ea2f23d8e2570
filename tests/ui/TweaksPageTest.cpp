// The Tweak Shell page on a fresh default machine, driven through tvTweak:
// boxes clicked and toggled with the space bar, the questions, the value
// editor's limits, the pop-up menu, Restore all Settings and Apply, with the
// machine's registry read back from its files.
#include "foundation/DefaultMachine.h"
#include "foundation/modRegistry.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"
#include "ui/main/Main.h"
#include "ui/tweaks/TweaksPage.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <QtTest>

namespace glyphmoor::test {

class TweaksPageTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TempDir> m_dir;
    std::unique_ptr<Machine> m_machine;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    std::unique_ptr<Main> m_window;

    std::filesystem::path MachineDir() const { return m_dir->Path() / "machine"; }
    std::string Stored(std::string_view path, std::string_view name) {
        auto machine = OpenMachineFolder(MachineDir());
        return machine.ok() ? GetRegString((*machine)->Registry(), path, name) : "no machine";
    }
    QTreeWidget* Tree() { return m_window->TweakPage().Tree(); }
    template <typename T = QWidget>
    T* Control(const char* name) {
        return m_window->findChild<T*>(QString::fromUtf8(name));
    }
    QTreeWidgetItem* Item(const std::string& key) {
        QTreeWidgetItem* item = m_window->TweakPage().ItemOf(key);
        if (item != nullptr) {
            Tree()->scrollToItem(item);
        }
        return item;
    }
    // A click on the node's box.
    void ClickBox(const std::string& key) {
        QTreeWidgetItem* item = Item(key);
        QVERIFY(item != nullptr);
        const QRect rect = Tree()->visualItemRect(item);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, QPoint(rect.left() + 8, rect.center().y()));
    }
    void ClickText(const std::string& key) {
        QTreeWidgetItem* item = Item(key);
        QVERIFY(item != nullptr);
        const QRect rect = Tree()->visualItemRect(item);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {},
                          QPoint(rect.left() + 40, rect.center().y()));
    }
    QString State(const std::string& key) {
        return Item(key)->data(0, Qt::AccessibleDescriptionRole).toString();
    }
    void Apply() {
        QVERIFY(Control<QPushButton>("cmdApply")->isEnabled());
        QTest::mouseClick(Control<QPushButton>("cmdApply"), Qt::LeftButton);
    }
    void Screenshot(const QString& name) {
        const QByteArray dir = qgetenv("GLYPHMOOR_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            std::filesystem::create_directories(dir.toStdString());
            QVERIFY(m_window->grab().save(QString::fromUtf8(dir) + QStringLiteral("/") + name +
                                          QStringLiteral(".png")));
        }
    }

private slots:
    void init() {
        m_dir = std::make_unique<TempDir>();
        QVERIFY(EnsureSeededMachine(MachineDir(), SeedDirs()).ok());
        auto machine = OpenMachineFolder(MachineDir());
        QVERIFY(machine.ok());
        m_machine = std::move(*machine);
        m_prompt = std::make_unique<ScriptedPrompt>(m_machine->Sys(), "Glyphmoor.hlp");
        m_window = std::make_unique<Main>(*m_machine, StartRequest{}, m_prompt.get());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_window->ShowPage(Page::TweakShell);
        Tree()->expandAll();
    }

    void cleanup() {
        m_prompt->Answer({PromptAnswer::Press(1)});  // "No" to the close question
        m_window.reset();
        m_machine.reset();
        m_dir.reset();
    }

    void theTreeShowsTheMachinesSettings() {
        QCOMPARE(Tree()->topLevelItemCount(), 7);  // no Display group on this Windows 98
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("General"));
        QCOMPARE(State("Beep On Errors"), QStringLiteral("on"));
        QCOMPARE(State("Smooth Scrolling"), QStringLiteral("off"));
        QCOMPARE(Item("Double Click Width")->text(0), QStringLiteral("Width"));
        QVERIFY(!Item("Large Icons")->data(0, Qt::WhatsThisRole).toString().isEmpty());
        QVERIFY(m_window->State().tweaksLoaded);
        Tree()->scrollToTop();
        Screenshot(QStringLiteral("tweak-shell"));
    }

    void clickingABoxTogglesItAndApplyWritesIt() {
        ClickBox("Smooth Scrolling");
        QCOMPARE(State("Smooth Scrolling"), QStringLiteral("on"));
        ClickText("Large Icons");  // selects, does not toggle
        QCOMPARE(State("Large Icons"), QStringLiteral("off"));
        QTest::keyClick(Tree(), Qt::Key_Space);
        QCOMPARE(State("Large Icons"), QStringLiteral("on"));
        Apply();
        QCOMPARE(Stored("HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics", "Shell Icon Size"),
                 std::string("48"));
        auto machine = OpenMachineFolder(MachineDir());
        QCOMPARE(
            GetRegDword((*machine)->Registry(), "HKEY_CURRENT_USER\\Control Panel\\desktop", "SmoothScroll"),
            1);
    }

    void aRefusedQuestionLeavesTheItemOffAndApplyDisabled() {
        m_prompt->Answer({PromptAnswer::Press(1)});  // "Cancel"
        ClickBox("Hide Network Neighborhood");
        QCOMPARE(m_prompt->Shown().size(), std::size_t{1});
        QCOMPARE(State("Hide Network Neighborhood"), QStringLiteral("off"));
        QVERIFY(!Control<QPushButton>("cmdApply")->isEnabled());
        m_prompt->Answer({PromptAnswer::Press(2)});  // "OK"
        ClickBox("Hide Network Neighborhood");
        QCOMPARE(State("Hide Network Neighborhood"), QStringLiteral("on"));
        QVERIFY(Control<QPushButton>("cmdApply")->isEnabled());
        QVERIFY(m_window->State().restartNeeded);
    }

    void theValueEditorSnapsBackToItsLimit() {
        ClickText("Double Click Speed");
        auto* txt = Control<QLineEdit>("txtTweak");
        auto* scr = Control<QScrollBar>("scrTweak");
        QVERIFY(txt->isVisible());
        QCOMPARE(txt->text(), QStringLiteral("500"));
        QCOMPARE(Control<QLabel>("lblTweak")->text(), QStringLiteral("milliseconds"));
        scr->setValue(950);
        QCOMPARE(scr->value(), 900);
        QCOMPARE(txt->text(), QStringLiteral("900"));
        Screenshot(QStringLiteral("tweak-shell-value"));
        txt->clear();
        QTest::keyClicks(txt, QStringLiteral("12"));
        QCOMPARE(scr->value(), 12);
        QCOMPARE(m_window->Tweaks().Find("Double Click Speed")->pending, std::string("12"));
        ClickText("Beep On Errors");
        QVERIFY(!txt->isVisible());
        Apply();
        QCOMPARE(Stored("HKEY_CURRENT_USER\\Control Panel\\Mouse", "DoubleClickSpeed"), std::string("12"));
    }

    void thePopupMenuExpandsCollapsesAndToggles() {
        ClickText("Mouse");
        m_window->SetPopupAnswer([](QMenu& menu) {
            QCOMPARE(menu.actions().size(), 13);
            menu.findChild<QAction*>(QStringLiteral("Shl_ColA"))->trigger();
        });
        const QRect rect = Tree()->visualItemRect(Item("Mouse"));
        QTest::mouseClick(Tree()->viewport(), Qt::RightButton, {}, rect.center());
        QVERIFY(!Tree()->topLevelItem(0)->isExpanded());
        QVERIFY(m_window->Dispatch("Shl_ExpA"));
        QVERIFY(Item("Restrictions")->isExpanded());
        ClickText("Restrictions");
        QVERIFY(m_window->Dispatch("Shl_Col"));
        QVERIFY(!Item("Restrictions")->isExpanded());
        Tree()->setCurrentItem(Item("Note Pad"));
        m_prompt->Answer({PromptAnswer::Press(1)});  // "OK"
        QVERIFY(m_window->Dispatch("Shl_Tgl"));
        QCOMPARE(State("Note Pad"), QStringLiteral("on"));
        QVERIFY(!m_window->Dispatch("Shl_Whats"));  // the pop-up's own key, which the handler does not know
    }

    void restoreAllSettingsAsksThenStagesTheDefaults() {
        ClickBox("Beep On Errors");
        Apply();
        m_prompt->Answer({PromptAnswer::Press(0)});  // "Cancel"
        QVERIFY(m_window->Dispatch("mnuTools(0)"));
        QCOMPARE(State("Beep On Errors"), QStringLiteral("off"));
        m_prompt->Answer({PromptAnswer::Press(1)});  // "OK"
        QVERIFY(m_window->Dispatch("mnuTools(0)"));
        QVERIFY(m_prompt->Shown().back().text.starts_with("Restoring all your Windows 98 system settings"));
        QCOMPARE(State("Beep On Errors"), QStringLiteral("on"));
        QCOMPARE(m_window->Tweaks().Find("Menu Show Delay")->image, kTweakImageOff);
        Apply();
        QCOMPARE(Stored("HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep"), std::string("Yes"));
    }
};

}  // namespace glyphmoor::test

QTEST_MAIN(glyphmoor::test::TweaksPageTest)
#include "TweaksPageTest.moc"
