// The Tweak Shell page on a fresh default machine, driven through tvTweak:
// boxes clicked and toggled with the space bar, the questions, the value
// editor's limits, the pop-up menu, Restore all Settings and Apply, with the
// machine's registry read back from its files.
#include "WindowFixture.h"
#include "tweaks/StartupPage.h"
#include "ui/tweaks/TweaksPage.h"
#include "ui/tweaks/frmAddItem.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTabBar>
#include <QTreeWidget>

namespace glyphmoor::test {

class TweaksPageTest : public WindowFixture {
    Q_OBJECT

private:
    QTreeWidget* Tree() { return m_window->TweakPage().Tree(); }
    QTreeWidgetItem* Item(const std::string& key) {
        QTreeWidgetItem* item = m_window->TweakPage().ItemOf(key);
        if (item != nullptr) {
            Tree()->scrollToItem(item);
        }
        return item;
    }
    // A click `across` pixels into the node's row: on its box (8) or its text (40).
    void ClickAt(const std::string& key, int across) {
        QTreeWidgetItem* item = Item(key);
        QVERIFY(item != nullptr);
        const QRect rect = Tree()->visualItemRect(item);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {},
                          QPoint(rect.left() + across, rect.center().y()));
    }
    void ClickBox(const std::string& key) { ClickAt(key, 8); }
    void ClickText(const std::string& key) { ClickAt(key, 40); }
    QString State(const std::string& key) {
        return Item(key)->data(0, Qt::AccessibleDescriptionRole).toString();
    }

private slots:
    void init() {
        MakeMachine();
        OpenWindow();
        m_window->ShowPage(Page::TweakShell);
        Tree()->expandAll();
    }
    void cleanup() { CloseAll(); }

    void theTreeShowsTheMachinesSettings() {
        // No Display group on this Windows 98; four boot groups, Options and four startup lists.
        QCOMPARE(Tree()->topLevelItemCount(), 16);
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("General"));
        QCOMPARE(State("Beep On Errors"), QStringLiteral("on"));
        QCOMPARE(State("Smooth Scrolling"), QStringLiteral("off"));
        QCOMPARE(Item("Double Click Width")->text(0), QStringLiteral("Width"));
        QVERIFY(!Item("Large Icons")->data(0, Qt::WhatsThisRole).toString().isEmpty());
        QVERIFY(m_window->State().tweaksLoaded);
        Tree()->scrollToTop();
        Screenshot(*m_window, QStringLiteral("tweak-shell"));
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
        Screenshot(*m_window, QStringLiteral("tweak-shell-value"));
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

    void theBootupTabShowsMsdosSysAndApplyWritesIt() {
        const std::string before = m_dir->Read("machine/drive_c/Msdos.sys");
        Control<QTabBar>("tabShell")->setCurrentIndex(1);
        Tree()->scrollToTop();
        Control<QTabBar>("tabShell")->setCurrentIndex(0);
        Control<QTabBar>("tabShell")->setCurrentIndex(1);
        const QRect boot = Tree()->visualItemRect(m_window->TweakPage().ItemOf("Boot"));
        QVERIFY(Tree()->viewport()->rect().contains(boot.topLeft()));
        QCOMPARE(State("Run Scandisk automatically after system crash"), QStringLiteral("on"));
        QCOMPARE(State("Enable F5-F8 Function Keys"), QStringLiteral("on"));  // not in the file
        QCOMPARE(State("Always boot into Startup Menu"), QStringLiteral("off"));
        ClickBox("Always boot into Startup Menu");
        ClickText("Startup Menu Delay");
        QCOMPARE(Control<QLabel>("lblTweak")->text(), QStringLiteral("seconds"));
        Control<QScrollBar>("scrTweak")->setValue(45);
        QCOMPARE(Control<QScrollBar>("scrTweak")->value(), 30);
        Screenshot(*m_window, QStringLiteral("tweak-shell-bootup"));
        Apply();
        QCOMPARE(m_dir->Read("machine/drive_c/Msdos.sys"),
                 before + "BootMenu=1\r\nBootMenuDefault=0\r\nBootMenuDelay=30\r\n");
    }

    void theMiscellaneousTabAddsDeletesAndSetsOptions() {
        const std::string userRun = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";
        Control<QTabBar>("tabShell")->setCurrentIndex(2);
        QCOMPARE(State(std::string(kOptionRestorePosition)), QStringLiteral("off"));
        ClickBox(std::string(kOptionContextMenu));
        ClickText("User Run");
        m_window->TweakPage().SetAddItemRunner([](frmAddItem& dialog) {
            dialog.findChild<QLineEdit*>(QStringLiteral("txtName"))->setText(QStringLiteral("Clock"));
            dialog.findChild<QLineEdit*>(QStringLiteral("txtCommand"))
                ->setText(QStringLiteral("C:\\clock.exe"));
            return dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isEnabled()
                       ? int(QDialog::Accepted)
                       : int(QDialog::Rejected);
        });
        QVERIFY(m_window->Dispatch("Shl_New"));
        QVERIFY(Item("User Run\\Clock") != nullptr);
        Screenshot(*m_window, QStringLiteral("tweak-shell-miscellaneous"));
        Apply();
        QCOMPARE(Stored(userRun, "Clock"), std::string("C:\\clock.exe"));
        QCOMPARE(
            Stored("HKEY_CLASSES_ROOT\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}\\shell\\Glyphmoor", ""),
            std::string("&Glyphmoor"));

        ClickText("User Run\\Clock");
        m_prompt->Answer({PromptAnswer::Press(0)});  // "No"
        QTest::keyClick(Tree(), Qt::Key_Delete);
        QVERIFY(m_prompt->Shown().back().text.find("'Clock'") != std::string::npos);
        QVERIFY(Item("User Run\\Clock") != nullptr);
        m_prompt->Answer({PromptAnswer::Press(1)});  // "Yes"
        QVERIFY(m_window->Dispatch("Shl_Del"));
        QVERIFY(m_window->TweakPage().ItemOf("User Run\\Clock") == nullptr);
        QCOMPARE(Stored(userRun, "Clock"), std::string("C:\\clock.exe"));  // until Apply
        Apply();
        QCOMPARE(Stored(userRun, "Clock"), std::string("Error"));
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
