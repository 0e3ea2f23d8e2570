// bench_window: how long the window takes to show what users wait for, on the
// machine the environment names (the default machine, or --machine DIR).
//
//   bench_window start                 the window opened on "Icons & Cursors"
//                                      until all seven lists are filled and drawn
//   bench_window change-icon FILE      the Change Icon dialog on FILE (a Windows
//                                      path of the machine) until its first paint
//
// It prints the milliseconds from entering main() to that moment and exits, so
// that a runner can time the whole process as well. Run it offscreen
// (QT_QPA_PLATFORM=offscreen).
#include "foundation/Startup.h"
#include "icons/IconCatalogue.h"
#include "ui/changeicon/frmChangeIcon.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/Main.h"
#include "ui/main/OpenMachine.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

// Calls `done` once `widget` has painted.
class FirstPaint final : public QObject {
public:
    FirstPaint(QWidget* widget, std::function<void()> done) : m_done(std::move(done)) {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_done) {
            // Report after the paint has finished.
            QTimer::singleShot(0, m_done);
            m_done = nullptr;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_done;
};

int Report(const QElapsedTimer& clock) {
    std::printf("%.1f\n", static_cast<double>(clock.nsecsElapsed()) / 1e6);
    std::fflush(stdout);
    return 0;
}

int StartWindow(glyphmoor::Machine& machine, const QElapsedTimer& clock) {
    glyphmoor::StartRequest request;
    request.firstPage = glyphmoor::Page::IconsAndCursors;
    glyphmoor::Main window(machine, request);
    window.show();
    bool reported = false;
    // Once the page has its entries, every list is drawn (the hidden ones
    // into an image, as they would be on being shown).
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        glyphmoor::IconsPage& page = window.Icons();
        for (int number = 1; number <= glyphmoor::kIconGroupCount; ++number) {
            if (page.List(number)->count() == 0) {
                return;
            }
        }
        for (int number = 1; number <= glyphmoor::kIconGroupCount; ++number) {
            (void)page.List(number)->grab();
        }
        poll.stop();
        reported = true;
        Report(clock);
        QApplication::quit();
    });
    poll.start(0);
    QApplication::exec();
    return reported ? 0 : 1;
}

int ChangeIcon(glyphmoor::Machine& machine, const std::string& file, const QElapsedTimer& clock) {
    glyphmoor::frmChangeIcon dialog(machine.Registry(), machine.Env());
    dialog.Prepare(file, 0);
    auto* grid = dialog.findChild<glyphmoor::IconGrid*>(QStringLiteral("lstMain"));
    if (grid == nullptr || grid->Count() == 0) {
        std::cerr << "bench_window: no icons in " << file << "\n";
        return 1;
    }
    const FirstPaint painted(grid, [&] {
        Report(clock);
        QApplication::quit();
    });
    dialog.show();
    QApplication::exec();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QElapsedTimer clock;
    clock.start();
    std::optional<std::string> machineDir;
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--machine" && i + 1 < argc) {
            machineDir = argv[++i];
        } else {
            words.push_back(word);
        }
    }
    const bool start = words.size() == 1 && words[0] == "start";
    const bool changeIcon = words.size() == 2 && words[0] == "change-icon";
    if (!start && !changeIcon) {
        std::cerr << "usage: bench_window [--machine DIR] start | change-icon FILE\n";
        return 2;
    }
    QApplication app(argc, argv);
    const auto machine = glyphmoor::OpenWindowMachine(
        machineDir, [](const QString& text) { std::cerr << text.toStdString() << "\n"; });
    if (machine == nullptr) {
        return 1;
    }
    return start ? StartWindow(*machine, clock) : ChangeIcon(*machine, words[1], clock);
}
