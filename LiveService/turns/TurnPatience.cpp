// SPDX-License-Identifier: MIT
#include "LiveService/turns/TurnPatience.h"

#include <algorithm>

namespace quorvell {

TurnPatience::Time TurnPatience::of(UtteranceShape shape) const
{
    const Time longestPause = m_pauses.empty() ? Time() : *std::ranges::max_element(m_pauses);
    switch (shape) {
    case UtteranceShape::whole:
        return std::min(whole * (1 + m_cutOff), open);
    case UtteranceShape::open:
        return std::clamp(longestPause * 5 / 4, open, longest);
    case UtteranceShape::hanging:
        return std::clamp(longestPause * 3 / 2, hanging, longest);
    }
    return unknown;
}

void TurnPatience::pauseBridged(Time pause)
{
    if (pause < leastPause)
        return;
    m_pauses.push_back(pause);
    if (m_pauses.size() > mostPauses)
        m_pauses.pop_front();
}

void TurnPatience::beganAgain(Time quiet, Time later)
{
    if (later > soon)
        return;
    ++m_cutOff;
    pauseBridged(quiet + later);
}

} // namespace quorvell
