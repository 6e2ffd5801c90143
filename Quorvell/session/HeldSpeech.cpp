#include "Quorvell/session/HeldSpeech.h"

#include <utility>

namespace quorvell {

void HeldSpeech::add(MicGateOutput output)
{
    m_heldChunks.push_back(std::move(output));
    if (m_heldChunks.size() <= most)
        return;
    m_heldChunks.pop_front();
    m_given -= m_given > 0 ? 1 : 0;
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
    m_heldChunks.erase(m_heldChunks.begin(), m_heldChunks.begin() + static_cast<std::ptrdiff_t>(m_given));
    m_given = 0;
    m_isCutOff = false;
}

void HeldSpeech::forget()
{
    *this = {};
}

} // namespace quorvell
