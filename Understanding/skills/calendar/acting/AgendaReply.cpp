// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/acting/AgendaReply.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/acting/ToldSeries.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t slotsNamed = 3;

std::string text(const Json& object, const char* key)
{
    return trimmed(readString(object, key).value_or(""));
}

std::vector<Json> listIn(const Json& result, const char* key)
{
    const Json* list = memberOf(result, key);
    return list && list->is_array() ? std::vector<Json>(list->begin(), list->end()) : std::vector<Json>();
}

/// The days that a list tells of, seen from today.
struct ListedDays {
    std::optional<SpokenDays> days{};
    DateParts today{};

    bool areOne() const { return days && days->isOneDay(); }
    /// Of what began before them.
    bool lieBehind(const DateParts& start) const { return days && start.wholeDay() < days->from.wholeDay(); }
};

/// "at 1 PM", or the day as well where the list is of several, or where it began on an earlier one.
std::string whenOf(const Json& item, const ListedDays& listed)
{
    const auto start = ToolResults::dateIn(item, "start");
    if (start && listed.lieBehind(*start)) {
        const std::string clock = SpokenWhen::clock(*start);
        return "since "
            + (start->wholeDay() == listed.today ? "today" + (clock.empty() ? "" : " at " + clock)
                                                 : SpokenWhen::date(*start));
    }
    if (!listed.areOne())
        return start ? SpokenWhen::on(SpokenWhen::date(*start)) : "";
    const std::string clock = start ? SpokenWhen::clock(*start) : "";
    return clock.empty() ? "all day" : "at " + clock;
}

/// `all` are those of the list; where it tells more times of a series, this one stands for them.
std::string sentence(const Json& item, const std::vector<FoundThing>& all, const ListedDays& listed)
{
    const auto times = ToldSeries::timesOf(ToolResults::thing(item, {}), all);
    const std::string when = times.size() > 1 ? ToldSeries::when(times) : whenOf(item, listed);
    const std::string place = text(item, "place");
    const std::string kind = text(item, "kind") == "reminder" ? "A reminder, " : "";
    return " " + kind + text(item, "title") + (when.empty() ? "" : ", " + when) + (place.empty() ? "" : ", " + place)
        + ".";
}

/// The user's own words for the days, as the end of a sentence.
std::string withLead(std::string days)
{
    static const std::string month("(?:january|february|march|april|may|june|july|august|september|october|november"
                                   "|december)");
    static const Pattern months("\\b" + month + "\\b", Pattern::Case::insensitive);
    static const Pattern date(
        "^(?:the )?\\d{1,2}(?:st|nd|rd|th)\\b|^\\d{1,2} [a-z]|^" + month, Pattern::Case::insensitive);
    static const Pattern weekday("\\b(mon|tues|wednes|thurs|fri|satur|sun)day\\b", Pattern::Case::insensitive);
    if (days.empty())
        return days;
    const bool isDate = date.find(days).has_value();
    if (const auto match = months.find(days))
        days = days.substr(0, match->range.start) + withUpperCaseFirst(days.substr(match->range.start));
    if (const auto match = weekday.find(days)) {
        const std::size_t start = match->range.start;
        days = (start == 0 ? "on " : "") + days.substr(0, start) + withUpperCaseFirst(days.substr(start));
    } else if (isDate) {
        days = "on " + days;
    }
    return " " + days;
}

/// Without it a calendar that could not be read would pass for an empty one. The sentences themselves hold paths.
std::string unread(const Json& result)
{
    return listIn(result, "problems").empty() ? "" : AgendaReply::notWhole;
}

std::string listReply(const Json& result, const RequestMemory& memory, const LocalTime& around)
{
    const auto items = listIn(result, "items");
    const std::string days = withLead(memory.daysInWords());
    if (items.empty())
        return "There is nothing in your calendar" + days + "." + unread(result);
    const std::string count =
        items.size() == 1 ? "There is one thing" : "There are " + std::to_string(items.size()) + " things";
    return count + days + "." + AgendaReply::sentences(items, memory.days, around) + unread(result);
}

std::string freeReply(const Json& result, const std::string& days)
{
    const auto slots = listIn(result, "slots");
    if (slots.empty())
        return "I found no free time" + withLead(days) + ".";
    std::string reply = "You are free";
    const std::size_t named = std::min(slots.size(), slotsNamed);
    std::optional<DateParts> last;
    for (std::size_t index = 0; index < named; ++index) {
        const auto start = ToolResults::dateIn(slots[index], "start").value_or(DateParts());
        const auto end = ToolResults::dateIn(slots[index], "end");
        const bool isNewDay = !last || last->wholeDay() != start.wholeDay();
        const std::string day = isNewDay ? " " + SpokenWhen::on(SpokenWhen::date(start.wholeDay())) : "";
        last = start;
        reply += (index > 0 ? ", or" : "") + day + " from " + SpokenWhen::clock(start)
            + (end ? " to " + SpokenWhen::clock(*end) : "");
    }
    return reply + "."
        + (listIn(result, "problems").empty() ? ""
                                              : " Not all of your calendar could be read, so you may be busy then.");
}

std::string caveats(const Json& result)
{
    std::string names;
    for (const Json& conflict : listIn(result, "conflicts")) {
        const std::string name = conflict.is_string() ? readString(conflict).value_or("") : text(conflict, "title");
        names += (names.empty() ? "" : " and ") + name;
    }
    std::string told = names.empty() ? "" : " That is at the same time as " + names + ".";
    for (const Json& reminder : listIn(result, "reminders"))
        told += " Your reminder “" + text(reminder, "title") + "” comes meanwhile.";
    return told + (readBool(result, "past").value_or(false) ? " Mind that this is already past." : "");
}

/// How much of a series was changed, as the end of a sentence.
std::string extent(const Json& result, Wish::Scope scope)
{
    if (!readBool(result, "repeats").value_or(false) || scope == Wish::Scope::open)
        return "";
    return scope == Wish::Scope::all ? ", and so are all its other times" : ", this time only";
}

/// When it ends, where they said that: ", until 4 PM".
std::string untilWhen(const ToolRequest& call, const Json& result)
{
    const auto arguments = parseJson(call.arguments);
    const Json* changes = arguments ? memberOf(*arguments, "changes") : nullptr;
    const bool isLength = changes && memberOf(*changes, "end") && !memberOf(*changes, "start");
    const bool isSaid = isLength || (arguments && (memberOf(*arguments, "end") || memberOf(*arguments, "minutes")));
    const auto start = ToolResults::dateIn(result, "start");
    const auto end = ToolResults::dateIn(result, "end");
    if (!isSaid || !start || !end || !(*end > *start))
        return "";
    const bool isSameDay = start->wholeDay() == end->wholeDay();
    return ", until " + (isSameDay ? SpokenWhen::clock(*end) : SpokenWhen::date(*end));
}

/// A day alone is no hour: that it was taken as all of it is said where they would expect one.
std::string allDay(const ToolRequest& call, const Json& result, const std::string& said)
{
    static const Pattern whole("\\b(?:all|whole|entire|full)[ -]day\\b", Pattern::Case::insensitive);
    const auto start = ToolResults::dateIn(result, "start");
    const auto arguments = parseJson(call.arguments);
    if (!start || !start->allDay || (arguments && memberOf(*arguments, "end")))
        return "";
    if (whole.find(said))
        return ", all day";
    return EventTitle::takesDays(text(result, "title")) ? "" : ", all day. Tell me the time if it has one";
}

/// What they wanted to know, or to be done, besides.
std::string asked(const Json& result, const std::string& said)
{
    static const Pattern clash("\\b(?:clash|conflict|overlap|collide)", Pattern::Case::insensitive);
    static const Pattern invites("\\binvite\\b|\\binvitations?\\b", Pattern::Case::insensitive);
    const bool isClear = clash.find(said) && listIn(result, "conflicts").empty();
    return std::string(isClear ? " Nothing clashes with it." : "")
        + (invites.find(said) ? " Nobody is invited by that: nothing is sent from here." : "");
}

/// Without it nobody would notice a wrong year.
std::string inYear(const std::optional<DateParts>& start, const LocalTime& around)
{
    const int thisYear = DateParts::fromDay(around.now, around.calendar).year;
    const bool isNear = !start || (start->year >= thisYear && start->year <= thisYear + 1);
    return isNear ? "" : ", in " + std::to_string(start->year);
}

std::string whatWent(const Json& result)
{
    const auto count = readInteger(result, "count");
    return count ? std::to_string(*count) + (*count == 1 ? " event" : " events") : text(result, "title");
}

std::string whatStayed(const Json& result)
{
    const auto count = readInteger(result, "not_deleted");
    return count ? " " + std::to_string(*count) + (*count == 1 ? " is" : " are") + " still there. "
            + ToolResults::forUser(text(result, "problem"))
                 : "";
}

enum class Described { time, length, title, place };

/// What else of an event was changed by the call.
Described described(const ToolRequest& call)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const Json* changes = memberOf(arguments, "changes");
    if (!changes || memberOf(*changes, "start"))
        return Described::time;
    return memberOf(*changes, "end")  ? Described::length
        : memberOf(*changes, "title") ? Described::title
        : memberOf(*changes, "place") ? Described::place
                                      : Described::time;
}

std::string eventReply(
    const ToolRequest& call, const ToolResult& answer, const RequestMemory& memory, const LocalTime& around)
{
    const Wish::Scope scope = memory.wish.scope;
    const Json& result = answer.json();
    const std::string title = text(result, "title");
    const auto start = ToolResults::dateIn(result, "start");
    const std::string when = SpokenWhen::on(start ? SpokenWhen::date(*start) : text(result, "when"));
    if (answer.status() == ToolStatus::deleted)
        return "I have deleted " + whatWent(result) + " from your calendar." + whatStayed(result);
    if (answer.status() == ToolStatus::undone)
        return "Undone: " + text(result, "what") + ".";
    const Described what = described(call);
    if (answer.status() == ToolStatus::changed && what == Described::title)
        return "It is called " + title + " now.";
    if (answer.status() == ToolStatus::changed && what == Described::place)
        return title + " is at " + text(result, "place") + " now.";
    if (answer.status() == ToolStatus::changed)
        return title + " is now" + (when.empty() ? " changed" : " " + when) + untilWhen(call, result)
            + extent(result, scope) + "." + caveats(result);
    const std::string repeat = text(result, "repeat_words");
    const std::string often = repeat.empty() ? "" : ", " + lowerCased(repeat.substr(0, 1)) + repeat.substr(1);
    return "I have put " + title + " into your calendar" + often
        + (when.empty() ? "" : (repeat.empty() ? ", " : ", starting ") + when) + inYear(start, around)
        + untilWhen(call, result) + allDay(call, result, memory.words) + "." + caveats(result)
        + asked(result, memory.words);
}

} // namespace

std::string AgendaReply::sentences(
    const std::vector<Json>& items, const std::optional<SpokenDays>& days, const LocalTime& around)
{
    const ListedDays listed{days, DateParts::fromDay(around.now, around.calendar)};
    std::vector<FoundThing> all;
    all.reserve(items.size());
    for (const Json& item : items)
        all.push_back(ToolResults::thing(item, {}));
    std::set<std::string> known; // Of each series the first time is told, for all of them.
    std::string told;
    std::size_t others = 0;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (!known.insert(ToldSeries::keyOf(all[index])).second)
            continue;
        if (known.size() > RequestMemory::mostTold)
            ++others;
        else
            told += sentence(items[index], all, listed);
    }
    return told + (others > 0 ? " And " + std::to_string(others) + " more." : "");
}

std::string AgendaReply::daysBehind(const std::string& days)
{
    return withLead(days);
}

std::string AgendaReply::named(const FoundThing& thing)
{
    const std::string when = thing.start ? SpokenWhen::on(SpokenWhen::date(*thing.start)) : "";
    return thing.title + (when.empty() ? "" : ", " + when);
}

std::string AgendaReply::offer(const Json& arguments)
{
    const auto start = ToolResults::dateIn(arguments, "start");
    const auto end = ToolResults::dateIn(arguments, "end");
    const auto repeat = ReminderRepeat::fromStored(text(arguments, "repeat"));
    const std::string often = repeat ? repeat->spoken("en_US") : "";
    std::string question = "Should I put " + readString(arguments, "title").value_or("that") + " into your calendar";
    if (!often.empty())
        question += ", " + lowerCased(often.substr(0, 1)) + often.substr(1);
    if (start)
        question += (often.empty() ? ", " : ", starting ") + SpokenWhen::on(SpokenWhen::date(*start));
    if (start && end && *end > *start)
        question +=
            ", until " + (end->wholeDay() == start->wholeDay() ? SpokenWhen::clock(*end) : SpokenWhen::date(*end));
    return question + "?";
}

std::string AgendaReply::next(const std::vector<FoundThing>& events)
{
    if (events.empty())
        return "There is nothing coming up in your calendar.";
    return "Next is " + named(events.front()) + ".";
}

std::string AgendaReply::done(const ToolRequest& call, const ToolResult& answer)
{
    const Json& result = answer.json();
    const std::string title = text(result, "title");
    const auto start = ToolResults::dateIn(result, "start");
    const std::string when = start ? SpokenWhen::on(SpokenWhen::date(*start)) : "";
    if (answer.status() == ToolStatus::added)
        return "put " + title + " into your calendar" + (when.empty() ? "" : ", " + when);
    if (answer.status() == ToolStatus::deleted)
        return "deleted " + whatWent(result) + " from your calendar";
    if (answer.status() != ToolStatus::changed)
        return "";
    return described(call) == Described::time ? "moved " + title + (when.empty() ? "" : " to " + when.substr(3))
                                              : "changed " + title + " in your calendar";
}

std::string AgendaReply::withUnread(std::string said, const Json& result)
{
    return said.ends_with('?') ? said : said + unread(result);
}

std::string AgendaReply::reply(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const LocalTime& around)
{
    if (call.name == "whats_on")
        return listReply(result.json(), memory, around);
    return call.name == "find_free_time" ? freeReply(result.json(), memory.daysInWords())
                                         : eventReply(call, result, memory, around);
}

} // namespace quorvell
