// SPDX-License-Identifier: MIT
// What the program itself has to tell the user, such as a reminder, until the conversation has a moment for it.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/quiet/QuietFacts.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace quorvell {

class Announcements {
public:
    static constexpr std::size_t most = 16; ///< The oldest go first; they were shown on the desktop as well.
    /// After so long only speech is waited for, not the end of a turn.
    static constexpr std::chrono::milliseconds patience{30'000};

    void add(std::string sentence, SessionTime now);
    bool isEmpty() const { return m_pending.empty(); }
    /// Something waits, and this is the moment to tell it.
    bool isDue(const QuietFacts& facts, SessionTime now) const;
    /// All that wait, oldest first; nothing waits afterwards.
    std::vector<std::string> take();

private:
    struct Pending {
        std::string sentence;
        SessionTime since{};
    };
    std::deque<Pending> m_pending;
};

} // namespace quorvell
