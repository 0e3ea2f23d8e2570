// The shipped help: a topic for every page, dialog and message keyword, its
// files and links whole, and the help window showing them. A screenshot goes
// to $GLYPHMOOR_SCREENSHOT_DIR when set.
#include "DialogSteps.h"
#include "foundation/InstallPaths.h"
#include "prompts/Prompt.h"
#include "ui/help/HelpTopics.h"
#include "ui/help/HelpWindow.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace glyphmoor::test {

namespace {

std::string FileText(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string WithoutAnchor(std::string_view file) {
    return std::string(file.substr(0, file.find('#')));
}

}  // namespace

class HelpTest : public QObject {
    Q_OBJECT

private slots:
    void everyPageDialogAndMessageHasATopic() {
        std::vector<std::string> keys = {"Contents", "Main", "What's This"};
        for (Page page : {Page::Themes, Page::IconsAndCursors, Page::Folders, Page::TweakShell}) {
            keys.emplace_back(PageTopicKey(page));
        }
        for (std::string_view dialog : HelpDialogs()) {
            keys.emplace_back(dialog);
        }
        for (std::string_view keyword : HelpKeywords()) {
            keys.emplace_back(keyword);
        }
        QCOMPARE(keys.size(), 15U);
        for (const std::string& key : keys) {
            const auto file = HelpTopicFile(key);
            QVERIFY2(file.has_value(), key.c_str());
            const std::string text = FileText(HelpDir() / WithoutAnchor(*file));
            QVERIFY2(text.find("<title>") != std::string::npos, key.c_str());
        }
        QVERIFY(!HelpTopicFile("Icon cache").has_value());  // keys are exact
    }

    void everyLinkOfTheHelpLeadsToAPage() {
        const QRegularExpression link(QStringLiteral("href=\"([^\"#:]+)(#([^\"]*))?\""));
        std::set<std::string> reached;
        for (const HelpTopic& topic : HelpTopics()) {
            reached.insert(WithoutAnchor(topic.file));
        }
        std::vector<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(HelpDir())) {
            files.push_back(entry.path().filename().string());
            const QString text = QString::fromStdString(FileText(entry.path()));
            for (const auto& match : link.globalMatch(text)) {
                const std::filesystem::path target = HelpDir() / match.captured(1).toStdString();
                const QString where = QString::fromStdString(entry.path().filename().string()) +
                                      QStringLiteral(" -> ") + match.captured(0);
                QVERIFY2(std::filesystem::is_regular_file(target), qPrintable(where));
                reached.insert(match.captured(1).toStdString());
                if (!match.captured(3).isEmpty()) {
                    const std::string anchor = "name=\"" + match.captured(3).toStdString() + "\"";
                    QVERIFY2(FileText(target).find(anchor) != std::string::npos, qPrintable(where));
                }
            }
        }
        // Every file of the help is a topic or reached from one.
        QVERIFY(!files.empty());
        for (const std::string& file : files) {
            QVERIFY2(reached.contains(file), file.c_str());
        }
    }

    void theWindowShowsATopicAndGoesBackToTheContents() {
        HelpWindow* window = ShowHelpTopic("Icon Cache", nullptr);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTextBrowser* browser = window->Browser();
        QCOMPARE(browser->source().fileName(), QStringLiteral("icon-cache.html"));
        QCOMPARE(browser->documentTitle(), QStringLiteral("Icon Cache"));
        QCOMPARE(window->windowTitle(), QStringLiteral("Glyphmoor Help - Icon Cache"));
        // The same window shows the next topic.
        QCOMPARE(ShowHelpTopic("frmChangeIcon", nullptr), window);
        QCOMPARE(browser->source().fileName(), QStringLiteral("change-icon.html"));
        QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("cmdContents")), Qt::LeftButton);
        QCOMPARE(browser->documentTitle(), QStringLiteral("Contents and Index"));
        QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("cmdBack")), Qt::LeftButton);
        QCOMPARE(browser->source().fileName(), QStringLiteral("change-icon.html"));
        // A key without a topic shows the contents.
        ShowHelpTopic("no such topic", nullptr);
        QCOMPARE(browser->source().fileName(), QStringLiteral("index.html"));

        Screenshot(*window, QStringLiteral("help"));
        window->close();
    }
};

}  // namespace glyphmoor::test

QTEST_MAIN(glyphmoor::test::HelpTest)
#include "HelpTest.moc"
