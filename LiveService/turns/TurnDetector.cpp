// SPDX-License-Identifier: MIT
#include "LiveService/turns/TurnDetector.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvell {

namespace {

// Levels are root mean squares of samples from -1 to 1.
constexpr float lowestOpenLevel = 0.010f; ///< Quiet speech at arm's length is about 0.02.
constexpr float lowestStayLevel = 0.007f;
constexpr float openRatio = 3.0f; ///< Over the noise of the room.
constexpr float stayRatio = 1.8f;
constexpr float highestFloor = 0.05f; ///< A louder "noise" is speech without a pause; it must not shut itself out.
constexpr std::size_t floorFrames = 100; ///< 2 s.
constexpr std::size_t leastFloorFrames = 25; ///< A stream may start in the middle of a word.
constexpr std::size_t onsetWindow = 5;
constexpr int onsetLoudFrames = 3; ///< 60 ms of 100: a click is shorter.

int framesIn(std::chrono::milliseconds time)
{
    return static_cast<int>(time / TurnDetector::frame);
}

float levelOf(const std::vector<std::int16_t>& samples)
{
    double sum = 0;
    for (const std::int16_t sample : samples)
        sum += static_cast<double>(sample) * sample;
    return static_cast<float>(std::sqrt(sum / static_cast<double>(samples.size())) / 32768.0);
}

void appendHeard(std::vector<TurnEvent>& events, const std::vector<std::int16_t>& samples)
{
    if (events.empty() || events.back().kind != TurnEvent::Kind::heard)
        events.push_back({.kind = TurnEvent::Kind::heard});
    auto& heard = events.back().samples;
    heard.insert(heard.end(), samples.begin(), samples.end());
}

} // namespace

TurnDetector::TurnDetector(int sampleRateHz)
    : m_frameSamples(static_cast<std::size_t>(std::max(sampleRateHz, 1000)) * frame.count() / 1000)
{
}

std::vector<TurnEvent> TurnDetector::take(std::span<const std::int16_t> samples, std::chrono::milliseconds now)
{
    std::vector<TurnEvent> events;
    const auto gap = now - std::exchange(m_lastSound, now);
    if (gap > leastGap && gap < 2 * longestDelay)
        m_stopsSending = false; // It was held up.
    while (!samples.empty()) {
        const std::size_t count = std::min(m_frameSamples - m_partial.size(), samples.size());
        m_partial.insert(m_partial.end(), samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count));
        samples = samples.subspan(count);
        if (m_partial.size() == m_frameSamples)
            takeFrame(std::exchange(m_partial, {}), events);
    }
    return events;
}

std::vector<TurnEvent> TurnDetector::look(std::chrono::milliseconds now)
{
    if (!m_isOpen || now < nextLook())
        return {};
    m_stopsSending = true;
    return finish();
}

std::vector<TurnEvent> TurnDetector::finish()
{
    std::vector<TurnEvent> events;
    if (m_isOpen) {
        appendHeard(events, m_partial);
        end(events);
    }
    m_partial.clear();
    m_before.clear();
    m_recentLoud.clear();
    return events;
}

std::vector<TurnEvent> TurnDetector::judge(int pause, std::optional<UtteranceShape> shape)
{
    std::vector<TurnEvent> events;
    if (!m_isOpen || pause != m_pause || m_quietFrames == 0)
        return events;
    m_wait = shape ? m_patience.of(*shape) : TurnPatience::unknown;
    if (m_quietFrames >= framesIn(m_wait))
        end(events);
    return events;
}

std::chrono::milliseconds TurnDetector::nextLook() const
{
    if (!m_stopsSending)
        return m_lastSound + longestDelay;
    return m_lastSound + std::clamp<std::chrono::milliseconds>(m_wait - m_quietFrames * frame, leastGap, endGap);
}

void TurnDetector::takeFrame(Frame samples, std::vector<TurnEvent>& events)
{
    const float level = levelOf(samples);
    const bool knowsRoom = m_levels.size() >= leastFloorFrames;
    const float noise = knowsRoom ? std::min(*std::ranges::min_element(m_levels), highestFloor) : 0.0f;
    m_levels.push_back(level);
    if (m_levels.size() > floorFrames)
        m_levels.pop_front();
    if (m_isOpen)
        followTurn(samples, level > std::max(noise * stayRatio, lowestStayLevel), events);
    else
        listenForOnset(std::move(samples), level > std::max(noise * openRatio, lowestOpenLevel), events);
}

void TurnDetector::listenForOnset(Frame samples, bool isLoud, std::vector<TurnEvent>& events)
{
    ++m_framesSinceEnd;
    m_before.push_back(std::move(samples));
    if (m_before.size() > static_cast<std::size_t>(framesIn(preRoll)))
        m_before.pop_front();
    m_recentLoud.push_back(isLoud);
    if (m_recentLoud.size() > onsetWindow)
        m_recentLoud.pop_front();
    if (std::ranges::count(m_recentLoud, true) < onsetLoudFrames)
        return;
    m_isOpen = true;
    m_turnFrames = m_loudFrames = onsetLoudFrames;
    m_quietFrames = 0;
    if (m_quietAtEnd > 0)
        m_patience.beganAgain(m_quietAtEnd * frame, m_framesSinceEnd * frame);
    events.push_back({.kind = TurnEvent::Kind::began});
    for (const Frame& before : std::exchange(m_before, {}))
        appendHeard(events, before);
    m_recentLoud.clear();
}

void TurnDetector::followTurn(const Frame& samples, bool isLoud, std::vector<TurnEvent>& events)
{
    appendHeard(events, samples);
    ++m_turnFrames;
    m_loudFrames += isLoud ? 1 : 0;
    if (isLoud && m_quietFrames > 0) {
        m_patience.pauseBridged(m_quietFrames * frame);
        m_wait = TurnPatience::unknown;
    }
    m_quietFrames = isLoud ? 0 : m_quietFrames + 1;
    if (m_quietFrames == framesIn(firstAsk) || m_quietFrames == framesIn(secondAsk))
        askWhatWasSaid(events);
    if (m_quietFrames >= framesIn(m_wait) || m_turnFrames >= framesIn(longestTurn)) {
        end(events);
        m_stopsSending = false;
    }
}

/// Until the answer comes they are waited for as if they might go on: it is slow where the computer is busy.
void TurnDetector::askWhatWasSaid(std::vector<TurnEvent>& events)
{
    if (m_quietFrames == framesIn(firstAsk))
        m_wait = m_patience.of(UtteranceShape::open);
    events.push_back({.kind = TurnEvent::Kind::paused, .pause = ++m_pause});
}

void TurnDetector::end(std::vector<TurnEvent>& events)
{
    m_isOpen = false;
    m_quietAtEnd = m_quietFrames;
    m_framesSinceEnd = 0;
    events.push_back({.kind = TurnEvent::Kind::ended, .speech = m_loudFrames * frame});
}

} // namespace quorvell
