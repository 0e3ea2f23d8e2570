// The message dialog as the window shows it, on the offscreen platform: its
// geometry by the layout rules, and its keys.
#include "DialogSteps.h"
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/System.h"
#include "prompts/modMsgbox.h"
#include "support/TempMachine.h"
#include "ui/help/HelpWindow.h"
#include "ui/prompt/frmPrompt.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QtTest>
#include <array>
#include <functional>

namespace glyphmoor {

namespace {

// A prompt that shows each request in a real frmPrompt, without a modal
// loop, and lets the test act on it before it goes.
class ProbePrompt final : public Prompt {
public:
    ProbePrompt(System& system, QWidget* parent = nullptr)
        : Prompt(system, "C:\\Glyphmoor.hlp"), m_parent(parent) {}

    std::function<void(frmPrompt&)> act;

protected:
    void Show(const PromptRequest& request) override {
        frmPrompt dialog(*this, request, m_parent);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        if (act) {
            act(dialog);
        }
    }

private:
    QWidget* m_parent;
};

QPushButton* Command(frmPrompt& dialog, int index) {
    return dialog.findChild<QPushButton*>(QString("Command(%1)").arg(index));
}

using test::Screenshot;
using test::WhenShown;

const char* const kLongText =
    "Glyphmoor has notified Windows 98 of your changes.\n\nWindows 95 and Windows NT contains flaws that can "
    "cause these changes to be ignored under certain conditions.\n\nIf your changes are not applied you will "
    "need to select the \"Rebuild Icon Cache\" option from the File menu.";

}  // namespace

class frmPromptTest : public QObject {
    Q_OBJECT

private slots:
    void oneButtonNoticeSitsAtTheFarRight();
    void longTextPushesTheButtonsDown();
    void checkBoxMakesTheDialogTaller();
    void centredOverTheParent();
    void escapeLeavesResultAndBoxUntouched();
    void enterPressesTheSafeAnswer();
    void helpStaysOpenAndEscapeKeepsItsIndex();
    void theWindowsHelpButtonShowsTheProgramsHelp();
    void spaceTicksTheBoxTakenAtThePress();
    void windowPromptRunsModally();

private:
    RecordingSystem m_system;
};

void frmPromptTest::oneButtonNoticeSitsAtTheFarRight() {
    ProbePrompt prompt(m_system);
    prompt.act = [](frmPrompt& dialog) {
        QPushButton* ok = Command(dialog, 0);
        QVERIFY(ok->isVisible());
        QVERIFY(!Command(dialog, 1)->isVisible());
        QVERIFY(!Command(dialog, 2)->isVisible());
        QCOMPARE(ok->text(), QString("OK"));
        QCOMPARE(ok->x(), dialog.PixelsAcross(dialog.Layout().dialogWidth - 1325));
        QCOMPARE(ok->size(), QSize(dialog.PixelsAcross(1095), dialog.PixelsDown(375)));
        QCOMPARE(dialog.width(), dialog.PixelsAcross(4200 + 1000 - 90));
        const int rightMargin = dialog.width() - ok->geometry().right() - 1;
        QVERIFY2(rightMargin >= 4 && rightMargin <= 16, qPrintable(QString::number(rightMargin)));
        QCOMPARE(dialog.windowTitle(), QString("Glyphmoor"));
        Screenshot(dialog, "frmPrompt-notice");
    };
    prompt.SetPromptText("Short.");
    prompt.ShowPrompt("", "", "OK", 32516, 0, "");
}

void frmPromptTest::longTextPushesTheButtonsDown() {
    ProbePrompt prompt(m_system);
    prompt.act = [](frmPrompt& dialog) {
        auto* label = dialog.findChild<QLabel*>("capMsg");
        QVERIFY(label->height() > dialog.PixelsDown(495));
        QCOMPARE(label->width(), dialog.PixelsAcross(4600));
        // The whole text fits in the label at its width.
        const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 100000),
                                                               Qt::TextWordWrap, label->text());
        QVERIFY(needed.height() <= label->height() + 1);
        for (int i = 0; i < 2; ++i) {
            QVERIFY(Command(dialog, i)->y() > label->geometry().bottom());
            QVERIFY(Command(dialog, i)->geometry().bottom() < dialog.height());
        }
        QCOMPARE(Command(dialog, 1)->x(), Command(dialog, 0)->x() - dialog.PixelsAcross(1210));
    };
    prompt.SetPromptText(kLongText);
    prompt.ShowPrompt("", "OK", "&Help", 32515, 4600, "");
}

void frmPromptTest::checkBoxMakesTheDialogTaller() {
    int without = 0;
    int with = 0;
    ProbePrompt prompt(m_system);
    prompt.act = [&without](frmPrompt& dialog) {
        QVERIFY(!dialog.findChild<QCheckBox*>("Check")->isVisible());
        without = dialog.height();
    };
    prompt.SetPromptText(kLongText);
    prompt.ShowPrompt("", "OK", "&Help", 32515, 4600, "");
    prompt.act = [&with](frmPrompt& dialog) {
        auto* check = dialog.findChild<QCheckBox*>("Check");
        auto* label = dialog.findChild<QLabel*>("capMsg");
        QVERIFY(check->isVisible());
        QCOMPARE(check->text(), QString("&Do not show this dialog again"));
        QCOMPARE(check->x(), label->x());
        QVERIFY(check->y() > label->geometry().bottom());
        QVERIFY(Command(dialog, 0)->y() > check->geometry().bottom());
        with = dialog.height();
        Screenshot(dialog, "frmPrompt-check");
        QCOMPARE(with - dialog.PixelsDown(405), dialog.PixelsDown(dialog.Layout().clientHeight - 405));
    };
    prompt.ShowPrompt("", "OK", "&Help", 32515, 4600, "Do not show this dialog again");
    QVERIFY(std::abs(with - without - 27) <= 1);  // 405 twips at 96 dpi
}

void frmPromptTest::centredOverTheParent() {
    QWidget main;
    main.setObjectName("Main");
    main.setGeometry(40, 60, 900, 700);
    main.show();
    QVERIFY(QTest::qWaitForWindowExposed(&main));
    ProbePrompt prompt(m_system, &main);
    prompt.act = [&main](frmPrompt& dialog) {
        const auto centre = [](const QRect& r) {
            return QPointF(r.x() + r.width() / 2.0, r.y() + r.height() / 2.0);
        };
        const QPointF offset = centre(dialog.frameGeometry()) - centre(main.frameGeometry());
        QVERIFY2(std::abs(offset.x()) <= 1 && std::abs(offset.y()) <= 1,
                 qPrintable(QString("%1,%2").arg(offset.x()).arg(offset.y())));
    };
    prompt.SetPromptText("Centred.");
    prompt.ShowPrompt("", "", "OK", 32516, 0, "");
}

void frmPromptTest::escapeLeavesResultAndBoxUntouched() {
    ProbePrompt prompt(m_system);
    prompt.act = [](frmPrompt& dialog) {
        dialog.findChild<QCheckBox*>("Check")->setChecked(true);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    };
    prompt.SetPromptText("Overwrite?");
    QCOMPARE(prompt.ShowPrompt("Yes", "No", "&Cancel", 32514, 0, "Do not ask me this question next time"),
             std::int16_t{4});
    QVERIFY(!prompt.PromptDontShowAgain());
}

void frmPromptTest::enterPressesTheSafeAnswer() {
    struct Case {
        const char* text;
        std::array<const char*, 3> buttons;  // Command(0), Command(1), Command(2)
        int safe;
    };
    const Case cases[] = {
        {"Would you like to restart your computer now?", {"No", "Yes", ""}, 0},
        {"Would you like to save your changes before closing?", {"Cancel", "No", "Yes"}, 0},
        {"Hiding Network Neighborhood disables shell support.", {"&Help", "Cancel", "OK"}, 1},
        {"Done.", {"", "", "OK"}, 2},
    };
    for (const auto& c : cases) {
        ProbePrompt prompt(m_system);
        prompt.act = [&c](frmPrompt& dialog) {
            QCOMPARE(QApplication::focusWidget(), Command(dialog, c.safe));
            QVERIFY(Command(dialog, c.safe)->isDefault());
            QTest::keyClick(&dialog, Qt::Key_Return);
            QVERIFY(!dialog.isVisible());
        };
        prompt.SetPromptText(c.text);
        QCOMPARE(prompt.ShowPrompt(c.buttons[2], c.buttons[1], c.buttons[0], 32514, 0, ""),
                 static_cast<std::int16_t>(c.safe));
    }
}

void frmPromptTest::helpStaysOpenAndEscapeKeepsItsIndex() {
    RecordingSystem system;
    ProbePrompt prompt(system);
    prompt.act = [&system](frmPrompt& dialog) {
        QTest::mouseClick(Command(dialog, 0), Qt::LeftButton);
        QVERIFY(dialog.isVisible());
        QCOMPARE(system.Calls().size(), std::size_t{1});
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    };
    prompt.SetPromptText("Hiding Network Neighborhood disables shell support.");
    QCOMPARE(prompt.ShowPrompt("OK", "Cancel", "&Help", 32515, 0, ""), std::int16_t{0});
    QCOMPARE(system.Calls().at(0),
             std::string("WinHelp \"C:\\Glyphmoor.hlp\" 0x105 \"Hide, Network Neighborhood\""));
}

void frmPromptTest::theWindowsHelpButtonShowsTheProgramsHelp() {
    RecordingSystem system;
    WindowPrompt prompt(system, "C:\\Glyphmoor.hlp");
    QString shown;
    WhenShown<frmPrompt>([&shown](frmPrompt* dialog) {
        QTest::mouseClick(Command(*dialog, 0), Qt::LeftButton);
        // The help opens beside the message, which stays open, and can be used.
        auto* help = dialog->findChild<HelpWindow*>();
        QVERIFY(help != nullptr && help->isVisible() && dialog->isVisible());
        shown = help->Browser()->source().fileName();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    prompt.SetPromptText("Hiding Network Neighborhood disables shell support.");
    prompt.ShowPrompt("OK", "Cancel", "&Help", 32515, 0, "");
    QCOMPARE(shown, QStringLiteral("hide-network-neighborhood.html"));
    QVERIFY(system.Calls().empty());  // no WinHelp
}

void frmPromptTest::spaceTicksTheBoxTakenAtThePress() {
    ProbePrompt prompt(m_system);
    prompt.act = [](frmPrompt& dialog) {
        auto* check = dialog.findChild<QCheckBox*>("Check");
        check->setFocus();
        QTest::keyClick(check, Qt::Key_Space);
        QVERIFY(check->isChecked());
        QTest::mouseClick(Command(dialog, 0), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
    };
    prompt.SetPromptText("Overwrite?");
    QCOMPARE(prompt.ShowPrompt("Yes", "No", "&Cancel", 32514, 0, "Do not ask me this question next time"),
             std::int16_t{0});
    QVERIFY(prompt.PromptDontShowAgain());
}

void frmPromptTest::windowPromptRunsModally() {
    RecordingSystem system;
    WindowPrompt prompt(system, "C:\\Glyphmoor.hlp");
    const test::TempMachine folder;
    const auto machine = folder.Open();
    const AppEnvironment app = InitEnvironment(machine->Env());
    AppState state;
    state.rebuildPending = true;
    bool sawDialog = false;
    WhenShown<frmPrompt>([&sawDialog](frmPrompt* dialog) {
        sawDialog = true;
        Screenshot(*dialog, "frmPrompt-MsgConfirmHideNetwork");
        QTest::mouseClick(Command(*dialog, 1), Qt::LeftButton);
    });
    // MsgConfirmHideNetwork through the window's prompt: "Cancel" is Command(1).
    MsgContext c{prompt, machine->Registry(), system, app, state};
    QCOMPARE(MsgConfirmHideNetwork(c), std::int16_t{1});
    QVERIFY(sawDialog);
}

}  // namespace glyphmoor

QTEST_MAIN(glyphmoor::frmPromptTest)
#include "frmPromptTest.moc"
