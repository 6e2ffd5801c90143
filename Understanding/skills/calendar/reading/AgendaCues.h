// SPDX-License-Identifier: MIT
// By which words requests about the calendar are known.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct AgendaCues {
    static constexpr Cue own{"own", Cue::tells}; ///< "I have", "I've got"
    static constexpr Cue schedule{"schedule", Cue::followsTime};
    static constexpr Cue unable{"unable", Cue::hinders}; ///< "I can't do": it cannot stay as it is.
    static constexpr Cue earlier{"earlier"}; ///< Of a change of time: not later.
    static constexpr Cue calendar{"calendar", Cue::container | Cue::followsTime};
    static constexpr Cue day{"day", Cue::content}; ///< "my week"
    static constexpr Cue event{"event", Cue::followsTime}; ///< Says that it is one: "an event"
    static constexpr Cue occasion{"occasion", Cue::content | Cue::names}; ///< Names one: "lunch"
    static constexpr Cue free{"free", Cue::followsTime};
    static constexpr Cue once{"once"}; ///< "only this time": not every time.
    static constexpr Cue time{"time"}; ///< "time", as in "when do I have time"
    static constexpr Cue busy{"busy", Cue::followsTime};
    static constexpr Cue next{"next"};
    static constexpr Cue further{"further"}; ///< "after that": behind what was just told.

    static std::span<const CueWords> rows();
};

} // namespace quorvell
