// SPDX-License-Identifier: MIT
// What words want of alarms and timers. Pure.
#pragma once

#include <chrono>
#include <string>

namespace quorvell {

struct AlarmWish {
    enum class Kind {
        set,
        list, ///< Which there are, or whether there is one.
        left, ///< Of timers: how much of them.
        ends, ///< Of timers: when they are over.
        cancel,
        cancelAll,
        stop, ///< What rings.
        snooze,
        pause,
        resume,
        add, ///< To a timer, or to what rings.
        move,
        runAnew, ///< A timer with another length; set where there is none of that name.
        rename,
        repeat, ///< By a rule, from now on.
        before, ///< An alarm so long before (or after) another thing that rings.
        sound, ///< Its tone is asked for.
        turnOn, ///< One that is there already, or else a new one.
        several, ///< To be set at once: `text` has their times.
        howOften, ///< One that is to repeat, and nobody said when.
        otherHalf, ///< "Evening", right after an hour was taken for the morning's.
    };

    Kind kind = Kind::set;
    bool isOfTimers = false;
    bool isWaking = false; ///< "Wake me": hardly in the evening.
    bool wantsSound = false; ///< A tone or a loudness that no alarm has.
    int count = 0; ///< Of several; 0 where no number was said.
    bool isOfAny = false; ///< They did not say what: "five more minutes".
    std::string text{}; ///< Of set: its time in the user's words, and what it is for where that was not apart.
    std::string name{};
    std::string which{}; ///< Words that tell it from others: "7 am", "on friday", "pasta".
    std::string when{}; ///< Of move; of rename the name, of repeat the rule, both in the user's words.
    /// Of a timer, of what is added (below 0: taken off), of a snooze, of the way to another thing (below 0: after it);
    /// 0 where none was said.
    std::chrono::seconds length{0};

    bool operator==(const AlarmWish&) const = default;
};

} // namespace quorvell
