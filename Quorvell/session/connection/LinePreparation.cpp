// SPDX-License-Identifier: MIT
#include "Quorvell/session/connection/LinePreparation.h"

#include <nlohmann/json.hpp>

namespace quorvell {

LinePreparation::LinePreparation(Ports ports, SessionLimits limits)
    : m_ports(ports)
    , m_limits(limits)
{
}

bool LinePreparation::onset()
{
    const bool isWanted = !m_ports.lines.hasPrepared();
    if (isWanted && !isAllowed())
        return false;
    m_timer = m_ports.scheduler.after(m_limits.preparedFor, [this] { throwAway(); });
    if (!isWanted)
        return false;
    m_unused.push_back(m_ports.scheduler.now());
    ++m_ports.meter.counts().prepared;
    m_ports.log.record("connection_prepared", Json::object());
    return true;
}

void LinePreparation::used()
{
    m_timer.cancel();
    if (m_ports.lines.hasPrepared() && !m_unused.empty())
        m_unused.pop_back();
}

void LinePreparation::throwAway()
{
    if (!m_ports.lines.hasPrepared())
        return;
    m_ports.log.record("connection_not_needed", Json::object());
    m_ports.lines.dropPrepared();
}

bool LinePreparation::isAllowed()
{
    constexpr std::chrono::hours span{1};
    while (!m_unused.empty() && m_ports.scheduler.now() - m_unused.front() > span)
        m_unused.pop_front();
    const bool isOftenUnused = m_unused.size() >= static_cast<std::size_t>(m_limits.preparedPerHour);
    return !isOftenUnused && !m_ports.meter.isDayUsedUp();
}

} // namespace quorvell
