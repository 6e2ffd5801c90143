// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/Announcements.h"

#include <utility>

namespace quorvell {

void Announcements::add(std::string sentence, SessionTime now)
{
    m_pending.push_back({std::move(sentence), now});
    if (m_pending.size() > most)
        m_pending.pop_front();
}

std::vector<std::string> Announcements::take()
{
    std::vector<std::string> sentences;
    for (Pending& pending : std::exchange(m_pending, {}))
        sentences.push_back(std::move(pending.sentence));
    return sentences;
}

} // namespace quorvell
