// SPDX-License-Identifier: MIT
// How many calls a model may make before the user has a say again.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <cstdint>
#include <deque>

namespace quorvell {

/// A value: time and calls in, verdicts out. A model that calls and calls is a fault of its service, or of somebody who
/// speaks through what it read; what tools leave behind cannot be taken back by silencing it.
class CallAllowance {
public:
    static constexpr int mostCalls = 100; ///< Between two requests of the user.
    static constexpr int mostChanges = 20; ///< Likewise, of calls that change something; a shopping list is shorter.
    static constexpr int mostChangesOfAMinute = 30; ///< Whatever the user says meanwhile: noise may pass for words.

    enum class Verdict : std::uint8_t {
        granted,
        askUser, ///< It changes something, and enough was changed for one request.
        tooFast, ///< Likewise for one minute.
        tooMany, ///< Whatever it does.
    };
    enum class Kind : std::uint8_t { looks, changes };

    /// Counts the call when it is granted.
    Verdict judge(Kind kind, SessionTime now);
    /// The user asks for something.
    void userAsked();

private:
    int m_calls = 0;
    int m_changes = 0;
    std::deque<SessionTime> m_recentChanges; ///< Within a minute, oldest first.
};

} // namespace quorvell
