// SPDX-License-Identifier: MIT
// What an utterance asks of the calendar.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/Wish.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/words/RequestReading.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct AgendaIntent {
    enum class Kind {
        list, ///< What is on in `days`.
        next, ///< The first of what is on in `days`, or the first that `title` names.
        findTime, ///< `minutes` that are free in `days`.
        add, ///< `title` at `start`.
        move, ///< The event that `title` names, of `days`: to `when`, or by `minutes`, below 0 to an earlier time.
        cancel, ///< The event that `title` names, of `days`.
    };

    Kind kind = Kind::list;
    std::optional<SpokenDays> days{};
    int minutes = 0; ///< 0 for none that was named.
    std::string title{};
    std::optional<DateParts> start{}; ///< Of add.
    std::optional<DateParts> end{};
    std::string repeat{}; ///< Of add: in the form of the tools; empty for none.
    std::string ruleEnd{}; ///< Of add: "until march", which no rule here can say.
    bool isRepeatUnknown = false; ///< Of add: it comes back in a way that no calendar rule here can say.
    Wish::Scope scope = Wish::Scope::open; ///< Of move and cancel.
    int remindMinutes = -1; ///< Of add: a reminder so long before it is wished for as well; below 0 for none.
    bool isWholeDay = false; ///< Of add: they said so.
    bool isToRepeat = false; ///< Of add: they did not say how often.
    bool isTimeUnclear = false; ///< Of add: the words say more of its time than was understood.
    bool isPartOfDay = false; ///< Of add: `start` stands for a morning or an evening.
    std::vector<DateParts> contraryDays{}; ///< Of add: two days that the words name and that do not agree.
    std::optional<DateParts> clock{}; ///< Of add: the hour that was clear where the day was not.
    bool isUnasked = false; ///< Of add: they only spoke of it, and are asked first.
    std::string when{}; ///< The user's words for the new time.
    std::string from{}; ///< Of move: the time at which it stands by their words; empty for none that was named.
    bool isFurther = false; ///< Of next: behind the one last talked about.

    bool hasTime() const { return start && !start->allDay; }

    bool operator==(const AgendaIntent&) const = default;

    static AgendaIntent ofNew(EventWords event);
    // Each from a request of its kind; nothing when the words are about something else.
    static std::optional<AgendaIntent> listing(const RequestReading& reading, const RuleSurroundings& around);
    static std::optional<AgendaIntent> following(const RequestReading& reading, const RuleSurroundings& around);
    static std::optional<AgendaIntent> findingTime(const RequestReading& reading, const RuleSurroundings& around);
    static std::optional<AgendaIntent> adding(const RequestReading& reading, const RuleSurroundings& around);
    /// Without a new time it has to be asked for.
    static std::optional<AgendaIntent> moving(const RequestReading& reading, const RuleSurroundings& around);
    static std::optional<AgendaIntent> cancelling(const RequestReading& reading, const RuleSurroundings& around);
    /// A question about the calendar, put in any words: the days that it names, or the event.
    static std::optional<AgendaIntent> asking(const RequestReading& reading, const RuleSurroundings& around);
};

} // namespace quorvell
