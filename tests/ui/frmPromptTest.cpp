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

private:
    RecordingSystem m_system;

private slots:
    // The layout's rules are LayoutPrompt's; the dialog puts every control where
    // the layout says, in pixels, shows what it says, and the whole text fits in
    // the label.
    void controlsStandWhereTheLayoutPutsThem() {
        const struct {
            const char* name;
            const char* text;
            std::array<const char*, 3> buttons;  // Command(0), Command(1), Command(2)
            std::int16_t width;
            const char* check;
        } cases[] = {
            {"notice", "Short.", {"OK", "", ""}, 0, ""},
            {"long text", kLongText, {"&Help", "OK", ""}, 4600, ""},
            {"check", kLongText, {"&Help", "OK", ""}, 4600, "Do not show this dialog again"},
            {"question", "Save?", {"Cancel", "No", "Yes"}, 5000, ""},
        };
        for (const auto& c : cases) {
            ProbePrompt prompt(m_system);
            prompt.act = [&c](frmPrompt& dialog) {
                const PromptLayout& layout = dialog.Layout();
                const auto at = [&dialog](const TwipsRect& r) {
                    return QRect(dialog.PixelsAcross(r.left), dialog.PixelsDown(r.top),
                                 dialog.PixelsAcross(r.width), dialog.PixelsDown(r.height));
                };
                QCOMPARE(dialog.size(), QSize(dialog.PixelsAcross(layout.clientWidth),
                                              dialog.PixelsDown(layout.clientHeight)));
                QCOMPARE(dialog.findChild<QLabel*>("picIcon")->geometry(), at(layout.icon));
                auto* label = dialog.findChild<QLabel*>("capMsg");
                QCOMPARE(label->geometry(), at(layout.label));
                const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 100000),
                                                                       Qt::TextWordWrap, label->text());
                QVERIFY2(needed.height() <= label->height() + 1, c.name);
                for (std::size_t i = 0; i < 3; ++i) {
                    QPushButton* button = Command(dialog, static_cast<int>(i));
                    QCOMPARE(button->isVisible(), layout.buttonVisible.at(i));
                    QCOMPARE(button->geometry(), at(layout.buttons.at(i)));
                    QCOMPARE(button->text(), QString(c.buttons.at(i)));
                    QVERIFY(button->geometry().bottom() < dialog.height());
                }
                auto* check = dialog.findChild<QCheckBox*>("Check");
                QCOMPARE(check->isVisible(), layout.checkVisible);
                if (layout.checkVisible) {
                    QCOMPARE(check->geometry(), at(layout.check));
                    QCOMPARE(check->text(), QString("&Do not show this dialog again"));
                }
                QCOMPARE(dialog.windowTitle(), QString("Glyphmoor"));
                // A one-button notice has its button close to the right edge.
                const int rightMargin = dialog.width() - Command(dialog, 0)->geometry().right() - 1;
                QVERIFY2(rightMargin >= 4 && rightMargin <= 16, qPrintable(QString::number(rightMargin)));
                Screenshot(dialog, QString("frmPrompt-") + c.name);
            };
            prompt.SetPromptText(c.text);
            prompt.ShowPrompt(c.buttons[2], c.buttons[1], c.buttons[0], 32515, c.width, c.check);
        }
    }

    void centredOverTheParent() {
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

    // A ticked box is taken with a button press (the Space bar ticks it), not
    // with Escape, which gives 4.
    void theBoxIsTakenOnlyWithAPress() {
        for (const bool escape : {true, false}) {
            ProbePrompt prompt(m_system);
            prompt.act = [escape](frmPrompt& dialog) {
                auto* check = dialog.findChild<QCheckBox*>("Check");
                check->setFocus();
                QTest::keyClick(check, Qt::Key_Space);
                QVERIFY(check->isChecked());
                if (escape) {
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                } else {
                    QTest::mouseClick(Command(dialog, 0), Qt::LeftButton);
                }
                QVERIFY(!dialog.isVisible());
            };
            prompt.SetPromptText("Overwrite?");
            QCOMPARE(
                prompt.ShowPrompt("Yes", "No", "&Cancel", 32514, 0, "Do not ask me this question next time"),
                static_cast<std::int16_t>(escape ? 4 : 0));
            QCOMPARE(prompt.PromptDontShowAgain(), !escape);
        }
    }

    void enterPressesTheSafeAnswer() {
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

    void theWindowsHelpButtonShowsTheProgramsHelp() {
        RecordingSystem system;
        WindowPrompt prompt(system, "C:\\Glyphmoor.hlp");
        QString shown;
        WhenShown<frmPrompt>([&shown](frmPrompt* dialog) {
            QTest::mouseClick(Command(*dialog, 0), Qt::LeftButton);
            // The help opens beside the message, which stays open; Escape then
            // gives the help button's index.
            auto* help = dialog->findChild<HelpWindow*>();
            QVERIFY(help != nullptr && help->isVisible() && dialog->isVisible());
            shown = help->Browser()->source().fileName();
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        prompt.SetPromptText("Hiding Network Neighborhood disables shell support.");
        QCOMPARE(prompt.ShowPrompt("OK", "Cancel", "&Help", 32515, 0, ""), std::int16_t{0});
        QCOMPARE(shown, QStringLiteral("hide-network-neighborhood.html"));
        QVERIFY(system.Calls().empty());  // no WinHelp
    }

    void windowPromptRunsModally() {
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
};

}  // namespace glyphmoor

QTEST_MAIN(glyphmoor::frmPromptTest)
#include "frmPromptTest.moc"
