// SPDX-License-Identifier: MIT
#include "Quorvell/session/usage/TalkMeter.h"

#include "Quorvell/session/hearing/MicrophoneStream.h"

#include <algorithm>

namespace quorvell {

TalkMeter::TalkMeter(UsageStore* store, std::optional<std::chrono::minutes> dailyMinutes)
    : m_store(store)
    , m_dailyMinutes(dailyMinutes)
{
}

void TalkMeter::connectionBegan()
{
    m_billedBefore = m_usage.billedSeconds;
    m_usage.contextRatio = 0;
}

void TalkMeter::voiceReceived(std::size_t bytes)
{
    m_usage.voiceSeconds += static_cast<double>(bytes) / (2.0 * MicrophoneStream::sampleRateHz);
}

void TalkMeter::report(const live_event::Usage& usage)
{
    m_usage.tokens += usage.totalTokens;
    m_usage.peakTokens = std::max(m_usage.peakTokens, usage.totalTokens);
}

void TalkMeter::report(const live_event::BilledSeconds& usage)
{
    m_usage.billedSeconds = m_billedBefore + usage.seconds;
}

void TalkMeter::billedBeside(double seconds)
{
    m_billedBefore += seconds;
    m_usage.billedSeconds += seconds;
}

void TalkMeter::meterTalk(std::chrono::milliseconds open)
{
    const double seconds = static_cast<double>(open.count()) / 1000;
    m_usage.connectedSeconds += seconds;
    if (m_store)
        m_store->addSeconds(seconds);
}

bool TalkMeter::isDayUsedUp() const
{
    return m_store && m_dailyMinutes && m_store->secondsToday() >= 60.0 * static_cast<double>(m_dailyMinutes->count());
}

std::string TalkMeter::usedUpSentence() const
{
    const auto minutes = m_dailyMinutes.value_or(std::chrono::minutes(0)).count();
    return "Today's " + std::to_string(minutes) + (minutes == 1 ? " minute" : " minutes") + " of spoken conversation "
        + (minutes == 1 ? "is" : "are")
        + " used up. Go on by typing (quorvell chat), or raise daily_minutes in the settings.";
}

bool TalkMeter::isNews()
{
    if (m_told == m_usage)
        return false;
    m_told = m_usage;
    return true;
}

} // namespace quorvell
