// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/CallAllowance.h"

namespace quorvell {

CallAllowance::Verdict CallAllowance::judge(Kind kind, SessionTime now)
{
    if (m_calls >= mostCalls)
        return Verdict::tooMany;
    if (kind == Kind::changes) {
        while (!m_recentChanges.empty() && now - m_recentChanges.front() >= std::chrono::minutes(1))
            m_recentChanges.pop_front();
        if (m_changes >= mostChanges)
            return Verdict::askUser;
        if (m_recentChanges.size() >= mostChangesOfAMinute)
            return Verdict::tooFast;
        ++m_changes;
        m_recentChanges.push_back(now);
    }
    ++m_calls;
    return Verdict::granted;
}

void CallAllowance::userAsked()
{
    m_calls = 0;
    m_changes = 0;
}

} // namespace quorvell
