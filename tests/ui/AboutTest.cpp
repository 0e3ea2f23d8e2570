// The about box: its version and memory texts, its two address labels and
// how it closes. A screenshot goes to $GLYPHMOOR_SCREENSHOT_DIR when set.
#include "DialogSteps.h"
#include "foundation/PhysicalMemory.h"
#include "foundation/Version.h"
#include "ui/about/frmAbout.h"

#include <QLabel>
#include <QPushButton>
#include <string>
#include <vector>

namespace glyphmoor::test {

class AboutTest : public QObject {
    Q_OBJECT

private:
    std::vector<std::string> m_opened;
    std::unique_ptr<frmAbout> m_about;

    QString Text(int index) const { return m_about->Label(index)->text(); }

private slots:
    void init() {
        m_opened.clear();
        m_about =
            std::make_unique<frmAbout>([this](std::string_view address) { m_opened.emplace_back(address); });
        m_about->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_about.get()));
    }

    void cleanup() { m_about.reset(); }

    void showsTheTitleAndTheVersion() {
        QCOMPARE(Text(0), QStringLiteral("Glyphmoor 0.75"));
        // The build's version, each number joined by ".0".
        const QStringList numbers = QString::fromUtf8(ProgramVersion().data()).split(QLatin1Char('.'));
        QCOMPARE(numbers.size(), 3);
        QCOMPARE(Text(1), QStringLiteral("Version %1.0%2.0%3").arg(numbers[0], numbers[1], numbers[2]));
    }

    void showsTheHostsMemoryInKilobytes() {
        const auto memory = ReadPhysicalMemory();
        QVERIFY(memory.has_value());
        QCOMPARE(Text(3), QString::fromStdString(FormatKilobytes(memory->totalBytes)));
        const QRegularExpression figure(QStringLiteral("^\\d{1,3}(,\\d{3})* Kb$"));
        QVERIFY2(figure.match(Text(4)).hasMatch(), qPrintable(Text(4)));
        // The timer refreshes the available figure.
        auto* timer = m_about->findChild<QTimer*>(QStringLiteral("Timer"));
        QVERIFY(timer != nullptr && timer->isActive());
        m_about->Label(4)->setText(QStringLiteral("stale"));
        QTRY_VERIFY_WITH_TIMEOUT(figure.match(Text(4)).hasMatch(), 3000);

        Screenshot(*m_about, QStringLiteral("about"));
    }

    void theLabelsOpenMailAndWebAddresses() {
        for (int index : {5, 6}) {
            emit m_about->Label(index)->linkActivated(QStringLiteral("ignored"));
        }
        // Other labels open nothing.
        emit m_about->Label(0)->linkActivated(QStringLiteral("ignored"));
        QCOMPARE(m_opened,
                 (std::vector<std::string>{"mailto:" + std::string(kSupportMail), std::string(kWebSite)}));
    }

    void escapeAndCloseCloseIt() {
        QTest::keyClick(m_about.get(), Qt::Key_Escape);
        QVERIFY(!m_about->isVisible());
        m_about->show();
        QTest::mouseClick(m_about->findChild<QPushButton*>(QStringLiteral("cmdClose")), Qt::LeftButton);
        QVERIFY(!m_about->isVisible());
    }
};

}  // namespace glyphmoor::test

QTEST_MAIN(glyphmoor::test::AboutTest)
#include "AboutTest.moc"
