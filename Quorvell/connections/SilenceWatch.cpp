#include "Quorvell/connections/SilenceWatch.h"

#include <utility>

namespace quorvell {

SilenceWatch::SilenceWatch(std::chrono::milliseconds patience, Reports reports)
    : m_reports(std::move(reports))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    QObject::connect(&m_patience, &QTimer::timeout, &m_context, [this] { losePatience(); });
}

void SilenceWatch::asked()
{
    if (!m_patience.isActive())
        m_patience.start();
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

void SilenceWatch::heard()
{
    m_isDoubted = false;
    m_hasSpokenSince = true;
    m_patience.stop();
}

void SilenceWatch::losePatience()
{
    if (std::exchange(m_isDoubted, true))
        return m_reports.wentSilent();
    m_patience.start();
    m_reports.doubted();
}

} // namespace quorvell
