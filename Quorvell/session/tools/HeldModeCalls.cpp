// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/HeldModeCalls.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

HeldModeCalls::HeldModeCalls(Scheduler& scheduler, std::function<void(ToolReport)> report)
    : m_scheduler(scheduler)
    , m_report(std::move(report))
{
}

void HeldModeCalls::ask(const LiveFunctionCall& call, ToolReply reply, const Words& words)
{
    const SessionTime now = m_scheduler.now();
    const SessionTime settled = words.last + wordsSettle;
    const bool mayMoreCome = words.areAwaited || (words.last > SessionTime::zero() && now < settled);
    if (!mayMoreCome && m_held.empty())
        return m_report(tool_report::HelpModeDue{call, std::move(reply)});
    m_held.push_back({call, std::move(reply), now + longestWait});
    waitUntil(words.areAwaited ? m_held.front().until : settled);
}

void HeldModeCalls::wordsCame()
{
    if (!m_held.empty())
        waitUntil(m_scheduler.now() + wordsSettle);
}

void HeldModeCalls::giveUp()
{
    m_timer.cancel();
    for (Held& held : std::exchange(m_held, {}))
        held.reply.fail("No active conversation.");
}

void HeldModeCalls::waitUntil(SessionTime moment)
{
    const SessionTime due = std::min(moment, m_held.front().until);
    m_timer = m_scheduler.after(due - m_scheduler.now(), [this] { reportAll(); });
}

void HeldModeCalls::reportAll()
{
    for (Held& held : std::exchange(m_held, {}))
        m_report(tool_report::HelpModeDue{std::move(held.call), std::move(held.reply)});
}

} // namespace quorvell
