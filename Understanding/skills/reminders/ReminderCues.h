// SPDX-License-Identifier: MIT
// By which words requests about reminders are known.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct ReminderCues {
    static constexpr Cue remind{"remind", Cue::takesDown | Cue::cutsClosing | Cue::followsTime};
    static constexpr Cue wake{"wake", Cue::takesDown};
    static constexpr Cue later{"later"};
    static constexpr Cue done{"done"};
    static constexpr Cue stop{"stop"}; ///< "stop reminding me", "no more"
    static constexpr Cue reminder{"reminder", Cue::thing | Cue::container | Cue::followsTime};
    static constexpr Cue reminders{"reminders", Cue::container | Cue::followsTime};
    static constexpr Cue pending{"pending"}; ///< "to do", "to remember"

    static std::span<const CueWords> rows();
};

} // namespace quorvell
