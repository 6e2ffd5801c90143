// SPDX-License-Identifier: MIT
// What is kept in mind of alarms and timers between two utterances.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <optional>
#include <string>

namespace quorvell {

struct AlarmTalk {
    /// What is to be done with the list that is asked for.
    enum class Purpose { tell, tellLeft, cancel, cancelAll, move };

    Purpose purpose = Purpose::tell;
    std::string which{}; ///< Words that tell those that are meant from the others.
    std::string when{}; ///< Of move.
    std::string id{}; ///< Of the one last talked about; never spoken. Empty for none.
    std::string title{};
    bool isTimer = false;
    std::optional<DateParts> other{}; ///< What its hour could have meant besides.

    bool operator==(const AlarmTalk&) const = default;
};

} // namespace quorvell
