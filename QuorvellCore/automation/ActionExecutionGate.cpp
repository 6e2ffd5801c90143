// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/ActionExecutionGate.h"

#include <utility>

namespace quorvell {

ActionExecutionGate::ActionExecutionGate(std::function<std::string()> freshID)
    : m_freshID(std::move(freshID))
{
}

std::optional<ActionExecutionGate::Ticket> ActionExecutionGate::begin(std::string callID)
{
    const std::lock_guard guard(m_lock);
    if (m_active)
        return std::nullopt;
    m_active = Ticket{m_freshID(), std::move(callID), std::make_shared<ActionCancellation>()};
    return m_active;
}

bool ActionExecutionGate::isCurrent(const Ticket& ticket) const
{
    const std::lock_guard guard(m_lock);
    return isActive(ticket);
}

std::optional<ActionExecutionGate::Ticket> ActionExecutionGate::current() const
{
    const std::lock_guard guard(m_lock);
    return m_active;
}

void ActionExecutionGate::finish(const Ticket& ticket)
{
    const std::lock_guard guard(m_lock);
    if (isActive(ticket))
        m_active.reset();
}

void ActionExecutionGate::cancel()
{
    const std::lock_guard guard(m_lock);
    if (m_active)
        m_active->cancellation->cancel();
    m_active.reset();
}

bool ActionExecutionGate::isActive(const Ticket& ticket) const
{
    return m_active && m_active->id == ticket.id;
}

} // namespace quorvell
