// SPDX-License-Identifier: MIT
// What the user said of which no words have come from the service yet, and how much of it the model has acted on all
// the same.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <chrono>

namespace quorvell {

/// Words come in the order in which they were spoken.
class WordlessSpeech {
public:
    /// Speech of which no word came for so long was a noise.
    static constexpr std::chrono::milliseconds recognition{5'000};

    /// Somebody begins to speak.
    void began(SessionTime now);
    /// They still speak.
    void goesOn(SessionTime now) { m_lastHeard = now; }
    /// The model acts on something that nobody is known to have said.
    void actedOn();
    /// The first words of one utterance. Whether the model has acted on them already.
    bool wordsBegan();
    void forget() { *this = {}; }

    /// Neither words nor an action came of some of it yet.
    bool isUnanswered(SessionTime now) const { return m_count > m_actedOn && areWordsAwaited(now); }
    bool areWordsAwaited(SessionTime now) const { return m_count > 0 && now - m_lastHeard < recognition; }

private:
    int m_count = 0;
    int m_actedOn = 0; ///< The first so many of them.
    SessionTime m_lastHeard{};
};

} // namespace quorvell
