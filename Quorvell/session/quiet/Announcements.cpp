// SPDX-License-Identifier: MIT
#include "Quorvell/session/quiet/Announcements.h"

#include <utility>

namespace quorvell {

void Announcements::add(std::string sentence, SessionTime now)
{
    m_pending.push_back({std::move(sentence), now});
    if (m_pending.size() > most)
        m_pending.pop_front();
}

bool Announcements::isDue(const QuietFacts& facts, SessionTime now) const
{
    if (isEmpty() || !facts.isConnected)
        return false;
    const bool isUrgent = now - m_pending.front().since > patience;
    return facts.isQuiet() || (isUrgent && !facts.isSpeechAround());
}

std::vector<std::string> Announcements::take()
{
    std::vector<std::string> sentences;
    for (Pending& pending : std::exchange(m_pending, {}))
        sentences.push_back(std::move(pending.sentence));
    return sentences;
}

} // namespace quorvell
