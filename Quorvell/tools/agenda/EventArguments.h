// SPDX-License-Identifier: MIT
// What the model asks of the calendar's tools, read and judged.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <vector>

namespace quorvell {

/// Each comes with a sentence for the model when it cannot be carried out as it is asked for.
struct EventArguments {
    /// The stretch of time that a call asks about.
    struct Stretch {
        Instant from{};
        Instant to{};
        std::string problem;
    };

    struct Draft {
        EventDraft draft; ///< Without its uid.
        std::string problem;
    };

    struct Change {
        EventChange change;
        std::string problem;
    };

    /// One id, or up to mostIds of them.
    struct Ids {
        std::vector<EventID> ids;
        std::string problem; ///< Else there is one at least.
    };
    static constexpr std::size_t mostIds = 50; ///< So many events are deleted by one yes.

    static Ids ids(const Json& arguments);
    /// Without "to" that many days from "from" on; for none the rest of that day.
    static Stretch stretch(const Json& arguments, std::chrono::days usualLength, Instant now, const Calendar& calendar);
    static Draft draft(const LiveFunctionCall& call, const Calendar& calendar);
    static Change change(const Json& changes, const CalendarEvent& event, const Calendar& calendar);
    static std::string text(const Json& arguments, std::string_view key);
};

} // namespace quorvell
