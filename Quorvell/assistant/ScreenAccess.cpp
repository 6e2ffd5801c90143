// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/ScreenAccess.h"

#include "Quorvell/loop/FreshUUID.h"
#include "Quorvell/settings/PrivateFile.h"
#include "QuorvellCore/automation/engine/macros/MacroFile.h"

#include <chrono>
#include <utility>

namespace quorvell {

ScreenAccess::ScreenAccess(Ports ports)
    : m_ports(std::move(ports))
    , m_files([this](std::function<void()> action) { m_ports.scheduler.post(std::move(action)); })
    , m_work(std::make_unique<ScreenWork>(workPorts(), workDeciders(), m_ports.session.helpMode()))
{
}

ScreenWork::Ports ScreenAccess::workPorts()
{
    SessionController& session = m_ports.session;
    return {.screen = m_ports.screen,
        .scheduler = m_ports.scheduler,
        .log = m_ports.log,
        .consent = m_ports.consent,
        .gate = session.tools().execution(),
        .freshMark = freshUUID,
        .plan = [&session]() -> const TaskPlan& { return session.tools().plan(); },
        .endPlan = [&session] { session.tools().endPlan(); },
        .tell = [&session](const LiveMessageText& message) { session.send(message); },
        .showTarget =
            [&session](std::string target, std::function<bool()> isStillThere) {
                session.showTarget(std::move(target), std::move(isStillThere));
            },
        .clearTarget = [&session] { session.clearTarget(); }};
}

ScreenWork::Deciders ScreenAccess::workDeciders()
{
    ScreenWork::Deciders deciders;
    deciders.engine.planner = m_ports.deciders.planner;
    deciders.engine.pim = m_ports.deciders.selector;
    deciders.engine.pimMode = m_ports.deciders.mode;
    deciders.engine.applications = m_ports.applications;
    deciders.engine.now = [] { return std::chrono::steady_clock::now(); };
    deciders.engine.clock = [] {
        return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    };
    deciders.engine.freshID = freshUUID;
    if (m_ports.macroFile.empty())
        return deciders;
    const std::string text = PrivateFile::readWhole(m_ports.macroFile, MacroFile::longest);
    auto read = MacroFile::read(text);
    m_mayStore = read || text.empty();
    if (!m_mayStore)
        m_problem = "The ways that were learned on the screen are in a file that cannot be read; nothing is added to "
                    "it. Move "
            + m_ports.macroFile + " away to begin anew.";
    if (read) {
        deciders.macros = std::move(read->book);
        if (!read->problems.empty())
            m_problem = read->problems.front();
    }
    deciders.storeMacros = [this](const MacroBook& book) { store(book); };
    return deciders;
}

void ScreenAccess::store(const MacroBook& book)
{
    if (!m_mayStore)
        return;
    m_files.run([file = m_ports.macroFile, text = MacroFile::write(book)] { return PrivateFile::replace(file, text); },
        [&log = m_ports.log](bool isStored) {
            if (!isStored)
                log.record("macros_not_stored", Json::object());
        });
}

} // namespace quorvell
