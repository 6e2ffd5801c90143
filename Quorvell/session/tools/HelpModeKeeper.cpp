// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/HelpModeKeeper.h"

#include "Quorvell/session/tools/HelpModeSwitch.h"

#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace quorvell {

HelpModeKeeper::HelpModeKeeper(Ports ports, HelpMode mode)
    : m_ports(std::move(ports))
    , m_mode(mode)
    , m_heldCalls(m_ports.scheduler, m_ports.report)
{
}

void HelpModeKeeper::change(HelpMode mode)
{
    if (std::exchange(m_mode, mode) == mode)
        return;
    m_ports.log.record("mode_changed", {{"mode", std::string(nameOf(mode))}});
    m_ports.observer.helpModeChanged(mode);
    m_ports.watch.modeChanged(mode);
}

void HelpModeKeeper::ask(tool_report::HelpModeAsked asked, const HeldModeCalls::Words& words)
{
    m_heldCalls.ask(asked.call, std::move(asked.reply), words);
}

void HelpModeKeeper::judge(tool_report::HelpModeDue due)
{
    m_ports.turn.finishUserWords();
    RecentRequests& requests = m_ports.turn.recentRequests();
    requests.heard("", m_ports.scheduler.now()); // Forgets what is too old to count.
    const auto name = due.call.string("mode");
    const HelpModeSwitch decision = HelpModeSwitch::judge(name, m_mode, requests);
    if (decision.mode)
        change(*decision.mode);
    due.reply.answer(decision.answer);
}

} // namespace quorvell
