// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/WordlessSpeech.h"

#include <algorithm>

namespace quorvell {

void WordlessSpeech::began(SessionTime now)
{
    if (!areWordsAwaited(now))
        forget();
    ++m_count;
    m_lastHeard = now;
}

void WordlessSpeech::actedOn()
{
    m_actedOn = std::min(m_actedOn + 1, m_count);
}

bool WordlessSpeech::wordsBegan()
{
    m_count = std::max(0, m_count - 1);
    const bool isLate = m_actedOn > 0;
    m_actedOn = std::min(std::max(0, m_actedOn - 1), m_count);
    return isLate;
}

} // namespace quorvell
