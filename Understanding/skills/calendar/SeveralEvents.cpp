// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/SeveralEvents.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t mostEvents = 5;

std::vector<std::string> partsOf(const std::string& words)
{
    static const Pattern joint("\\s*(?:;|,)\\s*(?:and (?:also |then )?)?|\\s+and (?:also |then )?", Pattern::caseless);
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (const auto& match : joint.findAll(words)) {
        parts.push_back(trimmed(words.substr(from, match.range.start - from), " .,;:"));
        from = match.range.end;
    }
    parts.push_back(trimmed(words.substr(from), " .,;:"));
    return parts;
}

/// What is one event alone: a name and a time of its own.
std::optional<EventWords> eventAlone(const std::string& part, const LocalTime& around)
{
    EventWords event = EventWords::read(part, around);
    const bool isWhole = event.start && !event.title.empty() && !event.isTimeUnclear && !event.isPartOfDay
        && !event.isRepeatUnknown && !event.isToRepeat && !CalendarWords::holdsTimeWords(event.title);
    return isWhole ? std::optional(std::move(event)) : std::nullopt;
}

void putOnDay(EventWords& event, const DateParts& day)
{
    const auto onDay = [&](DateParts moment) {
        moment.year = day.year;
        moment.month = day.month;
        moment.day = day.day;
        return moment;
    };
    event.start = onDay(*event.start);
    if (event.end)
        event.end = onDay(*event.end);
}

/// Each at an hour; the day that is named with the last, or in front of all, holds for those without one.
std::vector<EventWords> atHours(
    const std::vector<std::string>& parts, const std::optional<DateParts>& dayInFront, const LocalTime& around)
{
    std::vector<EventWords> events;
    std::vector<bool> named;
    for (const std::string& part : parts) {
        auto event = eventAlone(part, around);
        const auto moment = SpokenMoment::read(part, around);
        if (!event || event->start->allDay)
            return {};
        named.push_back(!moment || moment->namesDay || !event->repeat.empty());
        events.push_back(*std::move(event));
    }
    // "Eggs at 3 and milk at 5": on no day, and nothing that people go to.
    const bool namesDay = dayInFront || std::ranges::find(named, true) != named.end();
    if (!namesDay && !std::ranges::all_of(events, EventTitle::namesOccasion, &EventWords::title))
        return {};
    const auto day = dayInFront ? dayInFront : named.back() ? events.back().start : std::nullopt;
    for (std::size_t index = 0; index < events.size() && day; ++index)
        if (!named[index])
            putOnDay(events[index], *day);
    return events;
}

/// "A meeting with Bob and dinner with Ana for thursday": two that people go to, and not "dinner and drinks".
std::vector<EventWords> onOneDay(const std::vector<std::string>& parts, const LocalTime& around)
{
    static const Pattern article("^(?:an?|the|my|our) ", Pattern::caseless);
    const auto last = eventAlone(parts.back(), around);
    if (!last || !last->start->allDay || !last->repeat.empty())
        return {};
    std::vector<EventWords> events;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const bool isLast = index + 1 == parts.size();
        const std::string title = isLast ? last->title : withUpperCaseFirst(article.replaceAll(parts[index], ""));
        if (!EventTitle::namesOccasion(title) || RequestWords(title).size() < 2
            || (!isLast && SpokenMoment::read(parts[index], around)))
            return {};
        EventWords event = *last;
        event.title = title;
        events.push_back(std::move(event));
    }
    return events;
}

} // namespace

std::optional<Request> SeveralEvents::read(
    const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|kindly|just|i want to|i need to) )*(?:add|put|schedule|book|create|set(?: "
        "up)?|plan|arrange|enter|make|insert|pencil in)(?: in)? "
        "(?:(?:\\d|two|three|four|five|several|some|these|the following|following|both) (?:calendar )?"
        "(?:events|meetings|appointments|things|entries)(?: (?:in|into|to|on) my calendar)?(?: (?:for|on) ([^:]+?))? "
        "?[:,-] ?)?(.+)$",
        Pattern::caseless);
    const auto match = CalendarWords::isOfOthers(plain) ? std::nullopt : form.find(core);
    if (!match)
        return std::nullopt;
    const auto front = match->texts[0].empty() ? std::nullopt : SpokenMoment::read(match->texts[0], around);
    const auto parts = partsOf(match->texts[1]);
    if (parts.size() < 2 || parts.size() > mostEvents || std::ranges::any_of(parts, &std::string::empty))
        return std::nullopt;
    auto events = atHours(parts, front ? std::optional(front->date) : std::nullopt, around);
    if (events.empty())
        events = onOneDay(parts, around);
    if (events.empty())
        return std::nullopt;
    return Request{.answer = [events](RequestMemory memory, const RuleSurroundings& now) {
        const AgendaCalls calls{now};
        std::vector<ToolRequest> wished;
        for (const EventWords& event : events) {
            auto answer = calls.add(AgendaIntent::ofNew(event));
            auto* call = std::get_if<ToolRequest>(&answer);
            if (!call)
                return RuleStep{std::move(answer), std::move(memory)};
            wished.push_back(std::move(*call));
        }
        ToolRequest first = std::move(wished.front());
        wished.erase(wished.begin());
        memory.eventsToCome = std::move(wished);
        return RuleStep{std::move(first), std::move(memory)};
    }};
}

} // namespace quorvell
