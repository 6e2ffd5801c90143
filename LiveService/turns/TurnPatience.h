// SPDX-License-Identifier: MIT
// How long to wait, once somebody falls silent, before their turn is over. Pure.
//
// It depends on what they have said so far, and on how they speak: somebody who pauses long in mid-sentence is waited
// for longer from then on, and so is somebody who was cut off.
#pragma once

#include "Understanding/requests/UtteranceShape.h"

#include <chrono>
#include <deque>

namespace quorvell {

/// A value; lives with the session.
class TurnPatience {
public:
    using Time = std::chrono::milliseconds;

    static constexpr Time whole{250}; ///< A pause for breath is no longer.
    /// A pause of 700 ms is heard as up to 900 ms: words begin and end below the level of speech.
    static constexpr Time open{960};
    static constexpr Time hanging{1200};
    static constexpr Time unknown{520}; ///< No words were heard, or nobody could tell.
    static constexpr Time longest{2500};
    static constexpr Time leastPause{240}; ///< Shorter ones belong to the sounds of words.

    Time of(UtteranceShape shape) const;

    /// They went on after so long.
    void pauseBridged(Time pause);
    /// A turn was ended after `quiet`, and they began again so long after that: they may not have been done.
    void beganAgain(Time quiet, Time later);

private:
    static constexpr std::size_t mostPauses = 6; ///< A conversation's habits, not those of its first minute.
    static constexpr Time soon{700}; ///< Later than that it is another thought.

    std::deque<Time> m_pauses; ///< The last ones.
    int m_cutOff = 0;
};

} // namespace quorvell
