// WorkProgress: long work (packing or unpacking a bundle) done on a worker
// thread while the window stays painted and shows a busy progress dialog once
// the work takes more than a moment. Questions the work asks meanwhile are
// put to the user on the window's own thread (AskOnWindowThread).
#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>

#include <atomic>
#include <functional>
#include <optional>
#include <thread>

namespace glyphmoor {

// How long work runs before the progress dialog shows.
inline constexpr int kProgressDelayMs = 400;

template <typename T>
T RunWithProgress(QWidget* parent, const QString& label, const std::function<T()>& work) {
    std::optional<T> result;
    std::atomic<bool> done = false;
    QEventLoop loop;
    std::thread worker([&] {
        result.emplace(work());
        done = true;
        QMetaObject::invokeMethod(
            &loop, [&loop] { loop.quit(); }, Qt::QueuedConnection);
    });
    QProgressDialog progress(label, QString(), 0, 0, parent);
    progress.setWindowTitle(QStringLiteral("Glyphmoor"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(kProgressDelayMs);
    progress.setCancelButton(nullptr);
    progress.setValue(0);
    if (!done) {
        loop.exec();
    }
    worker.join();
    return std::move(*result);
}

// Runs `ask` on the application's thread and gives its answer; called from a
// worker thread of RunWithProgress (the window's thread then waits in its loop).
template <typename T>
T AskOnWindowThread(const std::function<T()>& ask) {
    T answer{};
    QMetaObject::invokeMethod(
        qApp, [&] { answer = ask(); }, Qt::BlockingQueuedConnection);
    return answer;
}

}  // namespace glyphmoor
