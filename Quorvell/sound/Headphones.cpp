// SPDX-License-Identifier: MIT
#include "Quorvell/sound/Headphones.h"

#include <algorithm>

namespace quorvell {

void Headphones::hear(float microphone, float loudspeaker)
{
    m_heard.push_back(microphone);
    m_played.push_back(loudspeaker);
    if (m_heard.size() <= window)
        return;
    m_heard.pop_front();
    m_played.pop_front();
    const auto lately = m_played.end() - static_cast<std::ptrdiff_t>(longestDelay);
    const float loudest = *std::max_element(m_played.begin(), m_played.end());
    const auto spoken = std::count_if(m_played.begin(), lately, [](float level) { return level > speakingLevel; });
    // Noise that is always there is no echo: an echo comes and goes with the words.
    const auto [least, most] = std::minmax_element(m_heard.begin(), m_heard.end());
    const float floor = *least * *least;
    const float audible = inaudible * inaudible * loudest * loudest;
    if (spoken >= leastSpoken && *most * *most - floor <= audible) {
        m_areOn = true;
        m_doubts = 0;
        return;
    }
    const bool isSpeaking = std::any_of(lately, m_played.end(), [](float level) { return level > speakingLevel; });
    if (isSpeaking && microphone * microphone - floor > audible && ++m_doubts > mostDoubts)
        m_areOn = false;
}

} // namespace quorvell
