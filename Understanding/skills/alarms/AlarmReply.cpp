// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmReply.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace quorvell {

namespace {

Json argumentsOf(const ToolRequest& call)
{
    return parseJson(call.arguments).value_or(Json::object());
}

std::string whenOf(const ToolResult& result, const AlarmItem& item, const LocalTime& around)
{
    const std::string when = item.when(around);
    return when.empty() ? SpokenWhen::on(result.string("when").value_or("")) : when;
}

/// "Say "evening" if you mean 7 PM."
std::string otherHour(const Json& result)
{
    const Json* other = memberOf(result, "other");
    const auto date = other ? ToolResults::dateIn(*other, "date") : std::nullopt;
    if (!date || date->allDay)
        return {};
    const char* word = date->hour < 12 ? "morning" : date->hour < 17 ? "afternoon" : "evening";
    return std::string(" Say \"") + word + "\" if you mean " + SpokenWhen::clock(*date) + ".";
}

std::string ofTimer(const Json& arguments, const AlarmItem& item, const LocalTime& around)
{
    const std::string name = withUpperCaseFirst(item.named(around));
    const std::string left = TimerLength::spoken(item.left);
    if (memberOf(arguments, "timer_seconds"))
        return name + " is set for " + left + ".";
    if (item.isPaused)
        return name + " is paused, with " + left + " left.";
    return memberOf(arguments, "resume") ? name + " goes on: " + left + " left." : name + " now has " + left + " left.";
}

bool isCancelled(const Json& arguments)
{
    return memberOf(arguments, "cancel") != nullptr;
}

/// "Rings in 7 hours and 30 minutes: 6:30 AM tomorrow."
std::string untilRing(const AlarmItem& alarm, const LocalTime& around)
{
    const auto start = alarm.thing.start ? alarm.thing.start->instant(around.calendar) : std::nullopt;
    if (!start)
        return withUpperCaseFirst(alarm.named(around)) + ".";
    const auto minutes =
        std::max(std::chrono::ceil<std::chrono::minutes>(*start - around.now), std::chrono::minutes(0));
    return withUpperCaseFirst(alarm.named(around)) + " rings in " + TimerLength::spoken(minutes) + ".";
}

std::string countOf(const ToolResult& result)
{
    const auto count = readInteger(result.json(), "count");
    return count ? std::to_string(*count) : "";
}

} // namespace

std::string AlarmReply::changed(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const LocalTime& around)
{
    const Json arguments = argumentsOf(call);
    const AlarmItem item = AlarmItem::of(result.json());
    if (result.status() == ToolStatus::deferred)
        return "All right. It rings again at "
            + (item.thing.start ? SpokenWhen::clock(*item.thing.start) : result.string("when").value_or("")) + ".";
    if (item.isTimer)
        return ofTimer(arguments, item, around);
    const std::string when = whenOf(result, item, around);
    const bool isNamed = !item.thing.title.empty() && item.thing.title != "Alarm";
    const std::string name = isNamed ? "The alarm \"" + item.thing.title + "\"" : "Your alarm";
    if (readBool(result.json(), "already").value_or(false))
        return name + " for " + when + " is set already.";
    static constexpr const char* ownTone = " It rings with its own tone, which I can't change.";
    return name + (memberOf(arguments, "id") ? " is now set for " : " is set for ") + when + "."
        + (memory.alarms.wantsSound ? ownTone : "")
        + (memory.alarms.isWaking || memberOf(arguments, "later") ? "" : otherHour(result.json()));
}

std::string AlarmReply::ended(
    const ToolRequest& call, const ToolResult& result, const AlarmTalk& talk, const LocalTime& around)
{
    const Json arguments = argumentsOf(call);
    const AlarmItem item = AlarmItem::of(result.json());
    const std::string next = SpokenWhen::on(result.string("next").value_or(""));
    const std::string again = next.empty() ? "" : " It rings again " + next + ".";
    const Json* ids = memberOf(arguments, "ids");
    if (const std::string count = countOf(result); !count.empty()) {
        const bool isAsSaid = ids && std::to_string(ids->size()) == count && !talk.severalEnded.empty();
        return isAsSaid ? talk.severalEnded
                        : count + (item.isTimer ? " timers" : " alarms")
                + (isCancelled(arguments) ? " are cancelled." : " are stopped.");
    }
    if (ids && isCancelled(arguments) && next.empty() && !talk.severalEnded.empty()) // How it repeated is gone by now.
        return talk.severalEnded;
    const std::string name = withUpperCaseFirst(item.named(around));
    if (!isCancelled(arguments))
        return "Stopped." + again;
    const std::string until = readString(arguments, "until").value_or("");
    return name
        + (next.empty() ? readBool(arguments, "series").value_or(false) ? " is cancelled, and all its further times."
                                                                        : " is cancelled."
                : until.empty() ? " does not ring this time."
                                : " does not ring until then.")
        + again;
}

std::string AlarmReply::cancelled(const std::vector<AlarmItem>& items, const LocalTime& around)
{
    if (items.size() == 1)
        return withUpperCaseFirst(items.front().named(around)) + " is cancelled.";
    const std::string noun = std::ranges::all_of(items, &AlarmItem::isTimer) ? "timers" : "alarms";
    return (items.size() == 2 ? "Both " : "All " + std::to_string(items.size()) + " ") + noun
        + " are cancelled: " + joined(items, around) + ".";
}

std::string AlarmReply::rested(const std::vector<AlarmItem>& items, const SpokenDays& days, const LocalTime& around)
{
    std::vector<AlarmItem> once;
    std::vector<AlarmItem> often;
    for (const AlarmItem& item : items)
        (item.rule ? often : once).push_back(item);
    const std::string end = once.empty() ? "" : "Cancelled: " + joined(once, around) + ". ";
    return end + "Not ringing " + days.words + ", and after that as before: " + joined(often, around) + ".";
}

std::string AlarmReply::areOn(const std::vector<AlarmItem>& items, const LocalTime& around)
{
    const char* are = items.size() == 1 ? "It is on: " : items.size() == 2 ? "Both are on: " : "They are on: ";
    return are + joined(items, around) + ".";
}

std::string AlarmReply::asked(const ToolResult& result, const LocalTime& around)
{
    const Json& json = result.json();
    const AlarmItem item = AlarmItem::of(json);
    if (result.status() == ToolStatus::whichReminder) {
        const std::vector<AlarmItem> items = AlarmItem::listed(json);
        const bool areTimers = std::ranges::all_of(items, &AlarmItem::isTimer);
        return (areTimers ? "Which timer do you mean: " : "Which one do you mean: ") + joined(items, around) + "?";
    }
    if (result.status() == ToolStatus::whichOccurrences)
        return withUpperCaseFirst(item.named(around)) + " rings "
            + (item.often.empty() ? "again and again" : item.often) + ". Only the next one, or all of them?";
    if (readBool(json, "past").value_or(false))
        return "That time is already past. For what time should the alarm be?";
    const std::string unclear = result.string("unclear").value_or("");
    static const Pattern rare(
        "^(?:every|each) .*\\b(?:other|second|third|\\d+|hour|minute)|^(?:the |every |each )*(?:1st|2nd|3rd|4th|first|"
        "second|third|fourth|last|alternate) (?:(?:mon|tues|wednes|thurs|fri|satur|sun)day|day|weekday)",
        Pattern::caseless);
    static const Pattern end(
        "^(?:until|till|through|up to|for the next|the next|next \\d|for \\d)\\b", Pattern::caseless);
    const std::string doubt = unclear.empty() ? ""
        : end.find(unclear) ? "An alarm that repeats rings until you cancel it: I can't give it an end. "
        : rare.find(unclear)
        ? "An alarm can ring every day, on weekdays, or on days of the week, every month or every year, and not "
            + unclear + (unclear.ends_with("other") ? " time. " : ". ")
        : "I am not sure what you mean by \"" + unclear + "\". ";
    const Json* understood = memberOf(json, "understood");
    const auto day = DateParts::parse(understood ? readString(*understood, "day").value_or("") : "");
    const std::string rule = understood ? readString(*understood, "rule").value_or("") : "";
    if (!rule.empty())
        return doubt + "At what time should it ring " + lowerCased(rule.substr(0, 1)) + rule.substr(1) + "?";
    return doubt
        + (day ? "At what time should it ring on " + SpokenWhen::date(*day) + "?"
               : "For what time should I set the alarm?");
}

std::string AlarmReply::joined(const std::vector<AlarmItem>& items, const LocalTime& around)
{
    std::string text;
    const std::size_t named = std::min(items.size(), RequestMemory::mostTold);
    for (std::size_t index = 0; index < named; ++index)
        text += (index == 0 ? "" : "; ") + items[index].described(around);
    return text + (named < items.size() ? "; and " + std::to_string(items.size() - named) + " more" : "");
}

std::string AlarmReply::list(
    const std::vector<AlarmItem>& items, const AlarmsMeant& meant, bool isOfTimers, const LocalTime& around)
{
    const std::string noun = isOfTimers ? "timer" : "alarm";
    if (isOfTimers && !meant.items.empty())
        return left(meant.items, false, around);
    if (items.empty())
        return isOfTimers ? "No timer is running." : "You have no alarm set.";
    const auto have = [&](const std::vector<AlarmItem>& these, const std::string& what) {
        return "You have "
            + (these.size() == 1 ? "one" + what : std::to_string(these.size()) + what + (what.empty() ? "" : "s"))
            + ": " + joined(these, around) + ".";
    };
    if (!meant.isNarrowed)
        return have(items, " " + noun);
    if (meant.items.empty())
        return "I found no " + noun + " " + meant.words + ". " + have(items, "");
    return meant.words == "like that" && meant.items.size() == 1 ? "That is " + joined(meant.items, around) + "."
                                                                 : have(meant.items, "");
}

std::string AlarmReply::left(
    const std::vector<AlarmItem>& items, const AlarmsMeant& meant, const AlarmTalk& wish, const LocalTime& around)
{
    const bool saysEnd = wish.purpose == AlarmTalk::Purpose::tellEnd;
    if (!wish.isTimer)
        return meant.items.empty() ? list(items, meant, false, around) : untilRing(meant.items.front(), around);
    if (!meant.items.empty() || items.empty())
        return left(meant.items, saysEnd, around);
    return "I found no timer " + meant.words + ". " + left(items, saysEnd, around);
}

std::string AlarmReply::left(const std::vector<AlarmItem>& items, bool saysEnd, const LocalTime& around)
{
    std::string text;
    for (const AlarmItem& item : items) {
        if (!item.isTimer)
            continue;
        const std::string name = withUpperCaseFirst(item.named(around));
        const bool isOver = item.left.count() == 0;
        const std::string remaining = TimerLength::spoken(item.left);
        text += (text.empty() ? "" : " ") + name;
        if (saysEnd && !isOver && !item.isPaused && item.thing.start)
            text += " is over at " + SpokenWhen::clock(*item.thing.start) + ", in " + remaining + ".";
        else
            text += isOver ? " is over." : (item.isPaused ? " is paused, with " : " has ") + remaining + " left.";
    }
    return text.empty() ? "No timer is running." : text;
}

std::string AlarmReply::whatWasDone(const ToolRequest& call, const ToolResult& result)
{
    const Json arguments = argumentsOf(call);
    const AlarmItem item = AlarmItem::of(result.json());
    const std::string when = SpokenWhen::on(result.string("when").value_or(""));
    const std::string title = result.string("task").value_or("");
    const bool isNamed = !title.empty() && title != "Alarm" && title != "Timer";
    const std::string name = std::string(item.isTimer ? "timer" : "alarm") + (isNamed ? " \"" + title + "\"" : "");
    const std::string count = countOf(result);
    if (readBool(result.json(), "already").value_or(false))
        return {};
    if (result.status() == ToolStatus::done && !count.empty())
        return "cancelled " + count + " alarms or timers";
    if (result.status() == ToolStatus::done)
        return (isCancelled(arguments) ? "cancelled the " : "stopped the ") + name;
    if (result.status() == ToolStatus::deferred)
        return "had the " + name + " ring again later";
    if (result.status() != ToolStatus::set)
        return {};
    if (memberOf(arguments, "timer_seconds"))
        return "set a " + name + " for " + TimerLength::spoken(item.left);
    if (item.isTimer)
        return (item.isPaused                          ? "paused the "
                       : memberOf(arguments, "resume") ? "let go on the "
                                                       : "changed the ")
            + name;
    return (memberOf(arguments, "id") ? "moved the " : "set an ") + name + (when.empty() ? "" : ", " + when);
}

} // namespace quorvell
