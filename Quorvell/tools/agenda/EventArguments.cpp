// SPDX-License-Identifier: MIT
#include "Quorvell/tools/agenda/EventArguments.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::minutes;

constexpr std::size_t longestTitle = 500; ///< User-perceived characters.
constexpr std::size_t longestNotes = 5000;
constexpr days longestEvent{366};
constexpr const char* dateForm = "must be a day that exists, written like \"2026-11-22 17:00\" or, for a whole day, "
                                 "\"2026-11-22\".";
constexpr const char* endsTooSoon = "It would end before it begins. Give an end that comes after start.";
constexpr const char* lastsTooLong = "It would last more than a year. Ask the user when it ends.";

/// A moment of the call, or the whole of a day.
struct CallDate {
    Instant start{};
    bool allDay = false;
};

/// Nothing when the key is missing; a problem when it is no date.
struct ReadDate {
    std::optional<CallDate> date;
    std::string problem;
};

ReadDate readDate(const Json& arguments, const char* key, const Calendar& calendar)
{
    const std::string text = EventArguments::text(arguments, key);
    if (text.empty())
        return {};
    const auto parts = DateParts::parse(text);
    const auto instant = parts ? parts->instant(calendar) : std::nullopt;
    if (!instant)
        return {std::nullopt, std::string(key) + " " + dateForm};
    return {CallDate{*instant, parts->allDay}, ""};
}

/// The two ends of an event or a stretch.
struct ReadDates {
    ReadDate first;
    ReadDate last;

    std::string problem() const { return first.problem.empty() ? last.problem : first.problem; }
};

Instant dayAfter(Instant moment, const Calendar& calendar)
{
    return calendar.instant(calendar.day(moment) + days(1), std::chrono::hours(0));
}

std::string lengthProblem(const Json& arguments)
{
    if (characterCount(EventArguments::text(arguments, "title")) > longestTitle
        || characterCount(EventArguments::text(arguments, "place")) > longestTitle)
        return "title and place may have at most 500 characters. Put the rest into notes.";
    if (characterCount(EventArguments::text(arguments, "notes")) > longestNotes)
        return "notes may have at most 5000 characters. Keep the rest with keep_note.";
    return "";
}

/// Why the call is no event, apart from its times.
std::string wordsProblem(const LiveFunctionCall& call, const ReadDates& dates)
{
    if (std::string problem = lengthProblem(call.args); !problem.empty())
        return problem;
    if (std::string problem = dates.problem(); !problem.empty())
        return problem;
    if (EventArguments::text(call.args, "title").empty())
        return "title is missing.";
    if (!dates.first.date)
        return "start is missing. Ask the user when it begins.";
    const std::string repeat = EventArguments::text(call.args, "repeat");
    if (!repeat.empty() && !ReminderRepeat::fromStored(repeat))
        return "repeat must be \"daily\", \"weekdays\", \"weekly:2\" (1 is Sunday, 7 Saturday), \"monthly:15\" or "
               "\"yearly\".";
    return "";
}

/// Gives the times of the draft, or why there are none.
std::string setTimes(EventDraft& draft, const LiveFunctionCall& call, const ReadDates& dates, const Calendar& calendar)
{
    constexpr double usualMinutes = 60;
    constexpr double mostMinutes = 7 * 24 * 60;
    const CallDate& start = *dates.first.date;
    const auto& end = dates.last.date;
    draft.allDay = start.allDay || readBool(call.args, "all_day").value_or(false);
    draft.start = draft.allDay ? calendar.startOfDay(start.start) : start.start;
    if (!draft.allDay && end && end->allDay)
        return "start has a time and end has none. Give both a time, or neither.";
    const double length = call.number("minutes").value_or(usualMinutes);
    if (!draft.allDay && !end && !(length >= 0 && length <= mostMinutes))
        return "minutes must be a number from 0 to 10080, a week. Give end for anything longer.";
    if (draft.allDay)
        draft.end = dayAfter(end ? end->start : draft.start, calendar);
    else
        draft.end = end ? end->start : draft.start + minutes(std::lround(length));
    if (draft.end < draft.start || (draft.allDay && draft.end == draft.start))
        return endsTooSoon;
    return draft.end - draft.start > longestEvent ? lastsTooLong : "";
}

/// A day alone moves an event with a time to the same time of that day.
Instant movedTo(const CallDate& date, Instant before, bool allDay, const Calendar& calendar)
{
    if (!date.allDay || allDay)
        return date.start;
    return calendar.addingDays(before, calendar.day(date.start) - calendar.day(before));
}

void readTexts(const Json& changes, EventChange& change)
{
    for (const auto& [key, member] :
        {std::pair("title", &change.title), {"place", &change.place}, {"notes", &change.notes}})
        if (readString(changes, key))
            *member = EventArguments::text(changes, key);
    if (change.title && change.title->empty())
        change.title.reset();
}

/// Why the event cannot become what is asked for.
std::string timesProblem(const EventChange& change, const CalendarEvent& event, const ReadDates& dates)
{
    const bool getsATime = event.allDay && !change.allDay.value_or(true);
    if (getsATime && (!dates.first.date || dates.first.date->allDay))
        return "It has no time yet. Give start with the time at which it begins, too.";
    const Instant start = change.start.value_or(event.start);
    const bool allDay = change.allDay.value_or(event.allDay);
    if (change.end && (*change.end < start || (allDay && *change.end == start)))
        return endsTooSoon;
    return change.end && *change.end - start > longestEvent ? lastsTooLong : "";
}

} // namespace

std::string EventArguments::text(const Json& arguments, std::string_view key)
{
    return trimmed(repairUtf8(readString(arguments, key).value_or("")));
}

EventArguments::Stretch EventArguments::stretch(
    const Json& arguments, days usualLength, Instant now, const Calendar& calendar)
{
    constexpr days longestLook{400};
    const ReadDates dates{readDate(arguments, "from", calendar), readDate(arguments, "to", calendar)};
    Stretch stretch{dates.first.date ? dates.first.date->start : now, {}, dates.problem()};
    if (const auto& to = dates.last.date)
        stretch.to = to->allDay ? dayAfter(to->start, calendar) : to->start;
    else if (usualLength == days(0))
        stretch.to = dayAfter(stretch.from, calendar);
    else
        stretch.to = calendar.addingDays(stretch.from, usualLength);
    stretch.to = std::min(stretch.to, stretch.from + longestLook);
    if (stretch.problem.empty() && stretch.to <= stretch.from)
        stretch.problem = "to must come after from.";
    return stretch;
}

EventArguments::Ids EventArguments::ids(const Json& arguments)
{
    constexpr const char* missing = "id is missing. Look the event up with whats_on and use the id it gives.";
    Ids read;
    const Json* list = memberOf(arguments, "ids");
    if (!list || !list->is_array()) {
        if (auto id = EventID::parse(text(arguments, "id")))
            read.ids.push_back(*std::move(id));
        else
            read.problem = missing;
        return read;
    }
    if (list->empty() || list->size() > mostIds)
        return {{}, "ids must hold 1 to " + std::to_string(mostIds) + " ids."};
    for (const Json& member : *list) {
        auto id = EventID::parse(readString(member).value_or(""));
        if (!id)
            return {{}, missing};
        if (std::find(read.ids.begin(), read.ids.end(), *id) == read.ids.end())
            read.ids.push_back(*std::move(id));
    }
    return read;
}

EventArguments::Draft EventArguments::draft(const LiveFunctionCall& call, const Calendar& calendar)
{
    const ReadDates dates{readDate(call.args, "start", calendar), readDate(call.args, "end", calendar)};
    Draft read;
    EventDraft& draft = read.draft;
    draft.title = withUpperCaseFirst(text(call.args, "title"));
    draft.place = text(call.args, "place");
    draft.notes = text(call.args, "notes");
    draft.repeat = ReminderRepeat::fromStored(text(call.args, "repeat"));
    read.problem = wordsProblem(call, dates);
    if (read.problem.empty())
        read.problem = setTimes(draft, call, dates, calendar);
    if (!read.problem.empty() || !draft.repeat)
        return read;
    // A series whose rule leaves out the day that was named begins on the first that it has.
    const auto moved = calendar.day(draft.repeat->first(draft.start, calendar)) - calendar.day(draft.start);
    draft.start = calendar.addingDays(draft.start, moved);
    draft.end = calendar.addingDays(draft.end, moved);
    return read;
}

EventArguments::Change EventArguments::change(const Json& changes, const CalendarEvent& event, const Calendar& calendar)
{
    Change read;
    EventChange& change = read.change;
    readTexts(changes, change);
    const ReadDates dates{readDate(changes, "start", calendar), readDate(changes, "end", calendar)};
    const auto& start = dates.first.date;
    change.allDay = readBool(changes, "all_day");
    if (!change.allDay && start && !start->allDay && event.allDay)
        change.allDay = false;
    const bool allDay = change.allDay.value_or(event.allDay);
    if (start)
        change.start = movedTo(*start, event.start, allDay, calendar);
    if (const auto& end = dates.last.date)
        change.end = allDay ? dayAfter(end->start, calendar) : movedTo(*end, event.end, allDay, calendar);
    const bool isNothing =
        !change.title && !change.place && !change.notes && !change.start && !change.end && !change.allDay;
    read.problem = lengthProblem(changes);
    if (read.problem.empty())
        read.problem = dates.problem();
    if (read.problem.empty() && isNothing)
        read.problem = "changes is empty. Give only what changes: title, start, end, all_day, place, notes.";
    if (read.problem.empty())
        read.problem = timesProblem(change, event, dates);
    return read;
}

} // namespace quorvell
