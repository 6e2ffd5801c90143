// SPDX-License-Identifier: MIT
// Events as every calendar gives and takes them.
#pragma once

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Instant.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Names one event, or one occurrence of a series, across all calendars: "f:UID" or "f:UID#20261122T170000".
struct EventID {
    char calendar = 'f'; ///< Which source keeps it.
    std::string uid;
    std::string occurrence; ///< Where the series puts it, by the series' own clock. Empty: the event as a whole.

    static std::optional<EventID> parse(std::string_view text);
    std::string text() const;

    bool operator==(const EventID&) const = default;
};

/// One event, or one occurrence of a series, as the user's days show it.
struct CalendarEvent {
    EventID id;
    std::string title;
    std::string place;
    std::string notes;
    Instant start{};
    Instant end{}; ///< Where it is over. Of whole days: the start of the day after the last.
    bool allDay = false;
    bool repeats = false;
    bool isBusy = true; ///< False where the calendar shows the time as free.

    bool operator==(const CalendarEvent&) const = default;
};

/// An event to be made.
struct EventDraft {
    std::string uid; ///< Unique in the world; 4 to 64 letters, digits and dashes, for it names a file.
    std::string title;
    std::string place;
    std::string notes;
    Instant start{};
    Instant end{};
    bool allDay = false; ///< Then start and end are starts of days.
    std::optional<ReminderRepeat> repeat{}; ///< One that names the day of `start`.
};

/// What is to be changed; the rest stays as it is.
struct EventChange {
    std::optional<std::string> title{};
    std::optional<std::string> place{};
    std::optional<std::string> notes{};
    std::optional<Instant> start{}; ///< Without an end the event keeps its length.
    std::optional<Instant> end{};
    std::optional<bool> allDay{};
};

enum class EventScope {
    occurrence, ///< Of a series only this one; of a single event all of it.
    series,
};

} // namespace quorvell
