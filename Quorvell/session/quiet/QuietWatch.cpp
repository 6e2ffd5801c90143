// SPDX-License-Identifier: MIT
#include "Quorvell/session/quiet/QuietWatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

QuietWatch::QuietWatch(Ports ports, const SessionSettings& settings)
    : m_ports(std::move(ports))
    , m_limits(settings.limits)
    , m_restsWhenQuiet(settings.restsWhenQuiet)
{
}

void QuietWatch::begin()
{
    noteActivity();
    m_lastCheck = m_ports.scheduler.now();
    m_idleCheckTimer = m_ports.scheduler.every(m_limits.idleCheck, [this] { m_ports.lookDue(); });
}

void QuietWatch::end()
{
    m_idleCheckTimer.cancel();
    clearTarget();
    m_consent = Consent::settled;
}

std::chrono::milliseconds QuietWatch::sinceLastLook()
{
    const SessionTime now = m_ports.scheduler.now();
    return std::min(now - std::exchange(m_lastCheck, now), 2 * m_limits.idleCheck);
}

void QuietWatch::showTarget(std::string currentTarget, std::function<bool()> isStillThere)
{
    m_currentTarget = std::move(currentTarget);
    m_isTargetThere = std::move(isStillThere);
    m_targetRefreshTimer = m_ports.scheduler.every(m_limits.targetRefresh, [this] { targetRefresh(); });
}

void QuietWatch::clearTarget()
{
    m_targetRefreshTimer.cancel();
    m_currentTarget.clear();
}

void QuietWatch::targetRefresh()
{
    if (!m_isTargetThere || m_isTargetThere())
        return;
    m_ports.log.record("target_gone", Json::object());
    clearTarget();
}

void QuietWatch::noteConsent(Consent consent)
{
    m_consent = consent;
    noteActivity();
}

IdleRules::Verdict QuietWatch::verdict(const QuietFacts& facts) const
{
    if (facts.isActing || facts.isDeviceSpeaking || facts.doze == Doze::waking)
        return IdleRules::Verdict::goOn;
    return idleRules(facts).verdict(m_limits);
}

IdleRules QuietWatch::idleRules(const QuietFacts& facts) const
{
    IdleRules rules;
    rules.quietFor = m_ports.scheduler.now() - m_lastActivity;
    rules.doze = facts.doze;
    rules.isListening = facts.isListening;
    rules.isHighlighted = facts.isHighlighted;
    rules.mayRest = m_restsWhenQuiet && facts.canRest && facts.isConnected && facts.isQuiet();
    return rules;
}

} // namespace quorvell
