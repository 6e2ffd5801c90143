// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/AgentCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/terminal/ShownOutput.h"
#include "Quorvell/assistant/ReminderService.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/records/EventLogFile.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/PrintableText.h"

#include <QDBusConnection>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>

#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace quorvell {

namespace {

/// One agent a user and notebook; ends with the program however that ends. Where it cannot be had it is not open, and
/// `problem` says why.
FileDescriptor takeAgentPlace(const std::string& notebookFolder, std::string& problem)
{
    const std::string path = notebookFolder + "/.agent";
    constexpr int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    FileDescriptor file(::open(path.c_str(), flags, 0600));
    if (!file.isOpen())
        problem = path + " cannot be opened. See that it is an ordinary file of yours, or move it away, and try again.";
    else if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
        problem = "Another quorvell agent already watches the reminders in " + notebookFolder + ". One is enough.";
    return problem.empty() ? std::move(file) : FileDescriptor();
}

/// Fires the reminders whenever this program owns the notebook: from the start, or once its owner ends.
class Agent {
public:
    Agent(const ProgramEnvironment& environment, Scheduler& scheduler)
        : m_environment(environment)
        , m_scheduler(scheduler)
        , m_log(environment.stateFolder, scheduler, freshNoteID())
    {
    }

    /// Empty, or why nothing can be done.
    std::string start()
    {
        OpenedNotebook opened = openNotebook(m_environment, m_scheduler);
        if (!opened.notebook)
            return opened.problem;
        m_notebook = std::move(opened.notebook);
        m_service = std::make_unique<ReminderService>(m_environment, *m_notebook, m_scheduler, m_log,
            ReminderService::Voices{whoeverListens(), [this] { tellOfMissingDesktop(); }, [] { endWithDesktop(); },
                [this] { ringBell(); }});
        m_log.record("agent_started", {{"owner", m_notebook->isOwner()}});
        return "";
    }

private:
    /// A terminal shows it to the user; a journal would keep it for others.
    std::function<void(const std::string& sentence)> whoeverListens() const
    {
        if (!m_environment.isOutputTerminal)
            return nullptr;
        return [](const std::string& sentence) { std::cout << printableLine(sentence) << std::endl; };
    }

    /// Rather than to hold the notebook where nobody is reached any more: who starts it anew finds the next bus.
    static void endWithDesktop()
    {
        std::cerr
            << "The session bus has ended, so that reminders cannot show on the desktop any more. The agent ends; "
               "start it again from your desktop session."
            << std::endl;
        ProgramLoop::end(exit_code::couldNot);
    }

    void tellOfMissingDesktop()
    {
        if (!std::exchange(m_hasTold, true))
            std::cerr << "A reminder is due, but nothing here shows notifications. Start a notification service; until "
                         "then \"quorvell reminders\" lists what is due."
                      << std::endl;
    }

    const ProgramEnvironment& m_environment;
    Scheduler& m_scheduler;
    EventLogFile m_log;
    std::unique_ptr<FullNotebook> m_notebook;
    std::unique_ptr<ReminderService> m_service;
    /// Nothing plays the alarm: the notice and the terminal are all there is.
    void ringBell() const
    {
        if (!m_environment.isOutputTerminal)
            return;
        ShownOutput::control(std::cout, "\a");
        std::cout << "An alarm rings, but nothing here can play it." << std::endl;
    }

    bool m_hasTold = false;
};

int runAgent(const ProgramEnvironment& environment)
{
    ProgramLoop loop;
    Agent agent(environment, loop.scheduler());
    const std::string problem = agent.start();
    if (!problem.empty()) {
        std::cerr << problem << std::endl;
        return exit_code::couldNot;
    }
    std::string whyNot;
    const FileDescriptor place = takeAgentPlace(environment.notebookFolder, whyNot);
    if (!place.isOpen()) {
        std::cerr << whyNot << std::endl;
        return exit_code::couldNot;
    }
    if (!environment.hasSessionBus || !QDBusConnection::sessionBus().isConnected())
        std::cerr << "There is no session bus here: reminders cannot show on the desktop, and other programs cannot "
                     "change the notebook while this one runs. Start the agent from your desktop session, as with "
                     "\"systemctl --user start quorvell-agent\"."
                  << std::endl;
    const Interrupts interrupts({[] { ProgramLoop::end(exit_code::done); }});
    return loop.run();
}

} // namespace

Command agentCommand(const ProgramEnvironment& environment)
{
    Command command("agent", "Fire reminders in the background, without a conversation (see quorvell-agent.service)");
    command.run = [environment] { return runAgent(environment); };
    return command;
}

} // namespace quorvell
