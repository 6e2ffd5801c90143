// SPDX-License-Identifier: MIT
// The one application object that Qt wants, for tests that need its event loop.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <chrono>
#include <functional>

namespace quorvell {

inline void needQtApplication()
{
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
}

/// Runs the event loop until `isDone` or the limit; true when it was done.
inline bool runUntil(
    const std::function<bool()>& isDone, std::chrono::milliseconds limit = std::chrono::milliseconds(5000))
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!isDone() && !elapsed.hasExpired(limit.count()))
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    return isDone();
}

} // namespace quorvell
