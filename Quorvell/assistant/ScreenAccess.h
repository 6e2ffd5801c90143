// SPDX-License-Identifier: MIT
// What works the screen in a conversation: put together from the user's choices, joined to the session.
#pragma once

#include "Quorvell/actions/work/ScreenWork.h"
#include "Quorvell/deciders/Deciders.h"
#include "Quorvell/files/FileWorker.h"
#include "Quorvell/session/SessionController.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; it borrows the screen, the session and what else it is given, all of which must outlive it.
class ScreenAccess {
public:
    struct Ports {
        Screen& screen;
        Scheduler& scheduler;
        EventLog& log;
        ConsentWords& consent;
        SessionController& session;
        Deciders deciders;
        std::vector<std::string> applications; ///< Installed here, for the fixed rules.
        std::string macroFile; ///< Empty: learned ways are forgotten with the program.
    };

    explicit ScreenAccess(Ports ports);

    /// Before the conversation begins.
    void registerTools(ToolRegistry& registry) { m_work->registerTools(registry); }
    ScreenWork& work() { return *m_work; }
    /// What was passed over of the learned ways; empty where nothing was.
    const std::string& problem() const { return m_problem; }

private:
    ScreenWork::Ports workPorts();
    ScreenWork::Deciders workDeciders();
    void store(const MacroBook& book);

    Ports m_ports;
    std::string m_problem;
    bool m_mayStore = true; ///< A file that could not be read is not written over.
    FileWorker m_files;
    std::unique_ptr<ScreenWork> m_work;
};

} // namespace quorvell
