// SPDX-License-Identifier: MIT
#include "Quorvell/session/hearing/HeldSpeech.h"

#include <algorithm>
#include <utility>

namespace quorvell {

void HeldSpeech::speechBegan()
{
    if (m_isCutOff && m_given == m_heldChunks.size())
        forget(); // The rest of a sentence that was reacted to: mostly the quiet at its end.
    m_earlier = m_heldChunks.size();
}

void HeldSpeech::add(MicGateOutput output)
{
    m_heldChunks.push_back(std::move(output));
    if (m_heldChunks.size() <= most)
        return;
    m_heldChunks.pop_front();
    m_given -= m_given > 0 ? 1 : 0;
    m_earlier -= m_earlier > 0 ? 1 : 0;
    m_isCutOff = true;
}

void HeldSpeech::giveTo(const std::function<void(const MicGateOutput&)>& take)
{
    while (m_given < m_heldChunks.size())
        take(m_heldChunks[m_given++]);
}

void HeldSpeech::connectionLost()
{
    m_given = 0;
}

void HeldSpeech::answered()
{
    if (m_given == 0)
        return;
    m_isCutOff = !m_heldChunks[m_given - 1].isEndMark();
    letGo(m_given);
}

void HeldSpeech::earlierAnswered()
{
    letGo(std::min(m_earlier, m_given));
}

void HeldSpeech::letGo(std::size_t count)
{
    m_heldChunks.erase(m_heldChunks.begin(), m_heldChunks.begin() + static_cast<std::ptrdiff_t>(count));
    m_given -= count;
    m_earlier -= std::min(m_earlier, count);
}

void HeldSpeech::forget()
{
    *this = {};
}

} // namespace quorvell
