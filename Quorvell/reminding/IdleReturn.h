// SPDX-License-Identifier: MIT
// Finds the user's return in samples of how long nobody has used the computer.
#pragma once

#include <chrono>

namespace quorvell {

/// A value; not thread safe.
class IdleReturn {
public:
    static constexpr std::chrono::minutes shortestAbsence{5};

    /// True for the first sample after an absence.
    bool cameBack(std::chrono::milliseconds idle)
    {
        const bool wasAway = m_isAway;
        m_isAway = idle >= shortestAbsence;
        return wasAway && !m_isAway;
    }

private:
    bool m_isAway = false;
};

} // namespace quorvell
