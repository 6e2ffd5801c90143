// SPDX-License-Identifier: MIT
// Changes to single events of a calendar file. Only for the sources of this room.
#pragma once

#include "Quorvell/agenda/IcsEvent.h"

#include <string>

namespace quorvell {

struct IcsEditing {
    [[nodiscard]] static icalcomponent* newEvent(const EventDraft& draft, const IcsZones& zones, Instant now);

    /// A copy of the series' event that stands for one of its occurrences.
    [[nodiscard]] static icalcomponent* newOccurrence(
        const IcsEvent& series, const IcsMoment& occurrence, const IcsZones& zones);

    // Each gives an empty text, or why it cannot be done.

    /// `shown` is the event as it was before.
    [[nodiscard]] static std::string change(const IcsEvent& event, const CalendarEvent& shown,
        const EventChange& change, const IcsZones& zones, Instant now);
    /// `occurrence` is the one that the change speaks of; all move as it does.
    [[nodiscard]] static std::string changeSeries(const IcsEvent& series,
        const std::vector<IcsEvent>& changedOccurrences, const IcsMoment& occurrence, const EventChange& change,
        const IcsZones& zones, Instant now);
    static void strikeOut(const IcsEvent& series, const IcsMoment& occurrence, Instant now);
};

} // namespace quorvell
