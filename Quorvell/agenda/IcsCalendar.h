// SPDX-License-Identifier: MIT
// The text of calendar files (iCalendar, RFC 5545): read into events, changed in place so that what other programs
// wrote into it stays.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "Quorvell/agenda/IcsReading.h"
#include "Quorvell/agenda/Patience.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A calendar file, or a single event without its calendar. One thread.
class IcsCalendar {
public:
    /// For whoever names an event that has been deleted meanwhile.
    static constexpr const char* goneEvent =
        "There is no event with that id any more. List the events again and use the id given there.";

    /// Nothing for what is no calendar or is beyond IcsLimits.
    static std::optional<IcsCalendar> parse(std::string_view text);
    static IcsCalendar withEvent(const EventDraft& draft, const Calendar& calendar, Instant now);

    ~IcsCalendar();
    IcsCalendar(IcsCalendar&& other) noexcept;
    IcsCalendar& operator=(IcsCalendar&& other) noexcept;

    std::string text() const;
    /// The texts of one event without its calendar: of its series under "", of what was changed of single occurrences
    /// under these, as the series' clock has them.
    std::map<std::string, std::string> parts(const std::string& uid, const Calendar& calendar) const;

    bool has(const std::string& uid) const;
    std::string firstUid() const; ///< Empty where there is no event.
    bool hasSeries() const; ///< An event that repeats, or what was changed of one.
    std::size_t eventCount() const; ///< Changed occurrences of a series count, too.

    /// Those that overlap the stretch of time, by their starts. `letter` goes into their ids; `calendar` settles what
    /// bears no zone of its own.
    IcsReading between(
        Instant from, Instant to, char letter, const Calendar& calendar, const Patience& patience = {}) const;
    std::optional<CalendarEvent> find(const EventID& id, const Calendar& calendar) const;

    /// Each gives an empty text, or why it cannot be done.
    [[nodiscard]] std::string change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now);
    [[nodiscard]] std::string remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now);
    /// The event becomes what it is in the other calendar, where it may be missing; all else stays.
    void takeOver(const std::string& uid, const IcsCalendar& other);

private:
    struct Content;

    explicit IcsCalendar(std::unique_ptr<Content> content);

    std::unique_ptr<Content> m_content;
};

} // namespace quorvell
