// SPDX-License-Identifier: MIT
#include "Quorvell/session/rest/Resting.h"

#include <utility>

namespace quorvell {

Resting::Resting(Ports ports, SessionLimits limits)
    : m_ports(std::move(ports))
    , m_limits(limits)
{
}

void Resting::begin()
{
    end();
    m_dozeFailed = false;
    m_dozes = 0;
}

void Resting::doze()
{
    if (m_doze != Doze::awake || !canRest())
        return;
    m_dozedAt = m_ports.scheduler.now();
    ++m_dozes;
    setDoze(Doze::dozing);
    listen();
}

void Resting::dozeAgain()
{
    if (m_doze != Doze::waking)
        return;
    m_wakingLimit.cancel();
    m_heardWhileDozing.clear();
    setDoze(Doze::dozing);
    listen();
}

void Resting::listen()
{
    DozeListener::Reports reports;
    reports.onset = [this] { m_ports.report(rest_report::Onset{}); };
    reports.heard = [this](const std::string& words) { m_ports.report(rest_report::Heard{words}); };
    reports.failed = [this](const std::string& sentence) { m_ports.report(rest_report::Failed{sentence}); };
    m_ports.listener->start(std::move(reports));
}

bool Resting::wake()
{
    if (m_doze != Doze::dozing)
        return false;
    m_ports.listener->stop();
    setDoze(Doze::waking);
    m_wakingLimit =
        m_ports.scheduler.after(m_limits.waking, [this] { m_ports.report(rest_report::WakingTookTooLong{}); });
    return true;
}

bool Resting::heard(const std::string& words)
{
    if (m_doze != Doze::dozing || words.empty())
        return false;
    m_heardWhileDozing = words;
    return true;
}

bool Resting::failed()
{
    if (m_doze != Doze::dozing)
        return false;
    m_dozeFailed = true;
    return true;
}

std::string Resting::finishWaking()
{
    if (m_doze != Doze::waking)
        return {};
    m_wakingLimit.cancel();
    setDoze(Doze::awake);
    return std::exchange(m_heardWhileDozing, {});
}

void Resting::end()
{
    if (m_doze == Doze::dozing)
        m_ports.listener->stop();
    m_wakingLimit.cancel();
    m_heardWhileDozing.clear();
    setDoze(Doze::awake);
}

void Resting::captured(std::span<const std::uint8_t> pcm)
{
    if (m_doze == Doze::dozing)
        m_ports.listener->captured(pcm);
}

void Resting::setDoze(Doze doze)
{
    if (std::exchange(m_doze, doze) != doze)
        m_ports.observer.restChanged(doze);
}

} // namespace quorvell
