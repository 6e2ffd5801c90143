// SPDX-License-Identifier: MIT
#include "Quorvell/sound/AlarmTone.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace quorvell {

namespace {

constexpr double lowNote = 740; ///< Hertz.
constexpr double highNote = 1110;
constexpr int noteSamples = AlarmTone::sampleRateHz / 8; ///< 125 ms.
constexpr int notes = 8; ///< Of a round; then a rest of 0.6 s.
constexpr double attackSeconds = 0.008;
constexpr double decaySeconds = 0.06;

double wave(double hertz, double seconds)
{
    const double phase = 2 * std::numbers::pi * hertz * seconds;
    return std::sin(phase) + 0.4 * std::sin(2 * phase) + 0.2 * std::sin(3 * phase);
}

/// 0 at both ends of a note.
double envelope(double seconds)
{
    constexpr double length = static_cast<double>(noteSamples) / AlarmTone::sampleRateHz;
    const double attack = std::min(1.0, seconds / attackSeconds);
    const double release = std::clamp((length - seconds) / attackSeconds, 0.0, 1.0);
    return attack * release * std::exp(-std::max(0.0, seconds - attackSeconds) / decaySeconds);
}

} // namespace

AlarmTone::AlarmTone()
    : m_round(roundSamples, 0.0F)
{
    for (int note = 0; note < notes; ++note) {
        const double hertz = note / 2 % 2 == 0 ? lowNote : highNote;
        for (int index = 0; index < noteSamples; ++index) {
            const double seconds = static_cast<double>(index) / sampleRateHz;
            m_round[static_cast<std::size_t>(note * noteSamples + index)] =
                static_cast<float>(envelope(seconds) * wave(hertz, seconds));
        }
    }
    const float peak = std::abs(
        *std::ranges::max_element(m_round, [](float left, float right) { return std::abs(left) < std::abs(right); }));
    for (float& sample : m_round)
        sample /= peak;
}

float AlarmTone::gain() const
{
    const float risen = std::min(1.0F, static_cast<float>(m_place) / static_cast<float>(riseSamples));
    return softest * std::pow(loudest / softest, risen);
}

void AlarmTone::render(std::span<std::int16_t> samples)
{
    constexpr float fullScale = std::numeric_limits<std::int16_t>::max();
    for (std::int16_t& sample : samples) {
        const float value = m_round[static_cast<std::size_t>(m_place % roundSamples)] * gain();
        sample = static_cast<std::int16_t>(std::lround(value * fullScale));
        ++m_place;
    }
}

} // namespace quorvell
