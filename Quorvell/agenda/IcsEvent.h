// SPDX-License-Identifier: MIT
// One VEVENT of a calendar file. Only for the sources of this room.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "Quorvell/agenda/IcsMoment.h"
#include "Quorvell/agenda/IcsReading.h"
#include "Quorvell/agenda/Patience.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Borrows its component.
struct IcsEvent {
    icalcomponent* component = nullptr;
    std::string uid;
    IcsMoment start;
    std::optional<IcsMoment> end;
    std::chrono::seconds duration{}; ///< Where there is no end.
    std::optional<IcsMoment> recurrence; ///< Which occurrence of its series this one replaces.
    bool isCancelled = false;
    bool repeats = false;

    /// Nothing without a uid and a start.
    static std::optional<IcsEvent> read(icalcomponent* component);

    /// Of whole days a number of days that may be an hour more or less.
    std::chrono::milliseconds length(const IcsZones& zones) const;

    /// The event as it is shown when it starts at `at`, an occurrence of its own.
    CalendarEvent shown(const IcsMoment& at, char letter, const IcsZones& zones) const;

    /// A stretch of time that is asked for, and what the answer has to do without.
    struct Search {
        Instant from{};
        Instant to{};
        const IcsZones& zones;
        Patience patience{};
        IcsOmissions omissions{};
    };

    /// The occurrences that start before `to` and are not over at `from`, its own start among them; without those that
    /// the file strikes out.
    std::vector<IcsMoment> occurrences(Search& search) const;

private:
    /// `from` is earlier than that of the search by the length of the event.
    void followRule(icalproperty* rule, Instant from, Search& search, std::vector<IcsMoment>& found) const;
    void followHours(const icalrecurrencetype& rule, Instant from, Search& search, std::vector<IcsMoment>& found) const;
    void followWeeks(const icalrecurrencetype& rule, Instant from, Search& search, std::vector<IcsMoment>& found) const;
    /// The last moment by the series' own clock that a rule need be followed to.
    IcsLocalTime farthest(const icalrecurrencetype& rule, const Search& search) const;
    void addFurtherDates(Search& search, std::vector<IcsMoment>& found) const;
    void removeStruckOut(const IcsZones& zones, std::vector<IcsMoment>& found) const;
};

} // namespace quorvell
