// SPDX-License-Identifier: MIT
#include "Quorvell/sound/RoomNoise.h"

#include <algorithm>
#include <cmath>

namespace quorvell {

namespace {

constexpr float newestShare = 0.1F; ///< Of the mean energies: it follows within a second.

} // namespace

void RoomNoise::hear(float level)
{
    m_levels.push_back(level);
    if (m_levels.size() > window)
        m_levels.pop_front();
}

float RoomNoise::floor() const
{
    return m_levels.size() < window ? 0.0F : *std::min_element(m_levels.begin(), m_levels.end());
}

void RoomNoise::learn(float before, float after)
{
    m_before += newestShare * (before * before - m_before);
    m_after += newestShare * (after * after - m_after);
}

void RoomNoise::suppress(std::span<std::int16_t> samples) const
{
    if (m_before <= m_after)
        return;
    const float left = std::sqrt(m_after / m_before);
    std::transform(samples.begin(), samples.end(), samples.begin(), [left](std::int16_t sample) {
        return static_cast<std::int16_t>(std::lround(left * static_cast<float>(sample)));
    });
}

} // namespace quorvell
