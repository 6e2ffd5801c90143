// SPDX-License-Identifier: MIT
// The event loop of a command that holds a conversation.
#pragma once

#include "Quorvell/app/program/EndDeadline.h"
#include "Quorvell/desktop/QtScheduler.h"

#include <QCoreApplication>

#include <string>

namespace quorvell {

/// One at a time.
class ProgramLoop {
public:
    ProgramLoop()
        : m_application(m_argumentCount, m_arguments)
    {
    }

    QtScheduler& scheduler() { return m_scheduler; }
    /// Until `end`; gives its exit code. From then on there is a limit to what the way out takes.
    int run()
    {
        EndDeadline::cancel();
        const int exitCode = QCoreApplication::exec();
        EndDeadline::begin();
        return exitCode;
    }
    static void end(int exitCode) { QCoreApplication::exit(exitCode); }

private:
    std::string m_name = "quorvell";
    int m_argumentCount = 1;
    char* m_arguments[2] = {m_name.data(), nullptr};
    QCoreApplication m_application;
    QtScheduler m_scheduler;
};

} // namespace quorvell
