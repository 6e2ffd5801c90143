// SPDX-License-Identifier: MIT
// What words say of an event that is to be put in: its title, and when it is. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct EventWords {
    std::string title{};
    std::optional<DateParts> start{}; ///< Nothing where the words name none, or not clearly.
    std::optional<DateParts> end{};
    int minutes = 0; ///< 0 for none that was named.
    std::string repeat{}; ///< In the form of the tools; empty for none.
    std::string ruleEnd{}; ///< "until march": when it ends to come back, in their words; no rule here can say it.
    bool isRepeatUnknown = false; ///< It comes back in a way that no calendar rule here can say.
    bool isVague = false; ///< "Next week": understood, and no day.
    bool isTimeUnclear = false; ///< The words say more of its time than was understood.
    bool isWholeDay = false; ///< They said so: "all day".
    bool isToRepeat = false; ///< They want it to come back, and did not say how often.
    bool isPartOfDay = false; ///< `start` stands for a morning or an evening: nobody named an hour.
    std::vector<DateParts> contraryDays{}; ///< A date, and the weekday that was said with it, where they do not agree.
    std::optional<DateParts> clock{}; ///< The hour that was clear where the day was not.

    static EventWords read(std::string words, const LocalTime& around);

    bool operator==(const EventWords&) const = default;
};

} // namespace quorvell
