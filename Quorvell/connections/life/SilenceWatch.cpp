// SPDX-License-Identifier: MIT
#include "Quorvell/connections/life/SilenceWatch.h"

#include <utility>

namespace quorvell {

SilenceWatch::SilenceWatch(Limits limits, Reports reports)
    : m_limits(limits)
    , m_reports(std::move(reports))
{
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_context, [this] { losePatience(); });
}

void SilenceWatch::asked()
{
    if (!m_patience.isActive())
        m_patience.start(m_limits.patience);
}

void SilenceWatch::soundSent()
{
    if (!std::exchange(m_isSoundUnderWay, true))
        m_hasSpokenSince = false;
}

void SilenceWatch::soundEnded()
{
    if (std::exchange(m_isSoundUnderWay, false) && !m_hasSpokenSince)
        asked();
}

void SilenceWatch::heard(Owes owes)
{
    m_isDoubted = false;
    m_hasSpokenSince = true;
    if (owes == Owes::more)
        m_patience.start(m_limits.patience);
    else
        m_patience.stop();
}

void SilenceWatch::losePatience()
{
    m_isDoubted = !m_isDoubted;
    if (!m_isDoubted)
        return m_reports.wentSilent();
    m_patience.start(m_limits.answer);
    m_reports.doubted();
}

} // namespace quorvell
