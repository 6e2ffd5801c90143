// SPDX-License-Identifier: MIT
// What is kept in mind of alarms and timers between two utterances.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct AlarmTalk {
    /// What is to be done with the list that is asked for.
    enum class Purpose { tell, tellLeft, tellEnd, cancel, cancelAll, move, runAnew, rename, repeat, before, turnOn };

    /// Alarms that one request sets one after the other.
    struct Series {
        std::vector<std::string> left{}; ///< Times still to be set, in words.
        std::vector<std::string> told{}; ///< Those that are set, for the reply.
        std::string name{};
        std::string lead{}; ///< Said before them: what was changed first, for which they stand in.

        bool operator==(const Series&) const = default;
    };

    Purpose purpose = Purpose::tell;
    std::string which{}; ///< Words that tell those that are meant from the others.
    std::string when{}; ///< Of move; of rename the name, of repeat the rule, in the user's words.
    std::chrono::seconds length{0}; ///< Of runAnew; of before, how long before (below 0: after) it.
    std::string id{}; ///< Of the one last talked about; never spoken. Empty for none.
    std::string title{};
    std::optional<DateParts> start{}; ///< When it rings.
    std::string severalEnded{}; ///< What is said once a call under way has ended several; empty for one.
    bool isTimer = false;
    bool isWaking = false; ///< It is to wake the user: an evening hour need not be offered.
    bool wantsSound = false; ///< They asked for a tone or a loudness that no alarm has.
    Series series{};
    std::string otherwise{}; ///< What is said where none of the alarms was meant.
    bool rings = false; ///< One that was just told of may be ringing.
    std::optional<DateParts> other{}; ///< What its hour could have meant besides.

    bool operator==(const AlarmTalk&) const = default;
};

} // namespace quorvell
