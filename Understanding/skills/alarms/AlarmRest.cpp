// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmRest.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmHours.h"
#include "Understanding/skills/alarms/AlarmReply.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenRepeat.h"
#include "Understanding/time/SpokenWhen.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quorvell {

namespace {

/// The times at which these ring before `day`, each as its reader wants it; empty where they are too many, or of
/// several names.
std::vector<std::string> ringingBefore(
    const std::vector<AlarmItem>& items, const DateParts& end, const RuleSurroundings& around)
{
    constexpr std::size_t mostStandIns = 4;
    constexpr std::int64_t minutesOfDay = 24 * 60;
    std::vector<std::string> times;
    for (const AlarmItem& item : items) {
        if (!item.thing.start || item.thing.title != items.front().thing.title)
            return {};
        const std::string clock = "at " + SpokenWhen::clock(*item.thing.start) + " on ";
        for (DateParts day = item.thing.start->wholeDay(); day < end && times.size() <= mostStandIns;
             day = day.adding(minutesOfDay).wholeDay())
            if (item.ringsOn({day, day, ""}, around))
                times.push_back(clock + day.text());
    }
    return times.size() <= mostStandIns ? times : std::vector<std::string>();
}

} // namespace

std::vector<std::string> AlarmRest::idsOf(const std::vector<AlarmItem>& items)
{
    std::vector<std::string> ids;
    ids.reserve(items.size());
    for (const AlarmItem& item : items)
        ids.push_back(item.thing.id);
    return ids;
}

RuleStep AlarmRest::askFirst(const ToolCalls::Answer& call, std::string question, RequestMemory memory)
{
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return {call, std::move(memory)};
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = std::move(question),
                                .tool = request->name,
                                .arguments = request->arguments},
        std::move(memory));
}

RuleStep AlarmRest::forDays(
    const std::vector<AlarmItem>& items, const SpokenDays& days, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    const auto isNext = [&](const AlarmItem& item) {
        const DateParts day = item.thing.start.value_or(DateParts()).wholeDay();
        return day >= days.from.wholeDay() && day <= days.to.wholeDay();
    };
    const auto apart = std::ranges::find_if_not(items, isNext);
    constexpr int longestRest = 60; // Days; beyond it they are not to be left out for a while but gone.
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    if (apart == items.end() && days.to.wholeDay() <= today.adding(longestRest * 24 * 60)) {
        memory.alarms.severalEnded = AlarmReply::rested(items, days, around);
        return {calls.cancelUntil(idsOf(items), days.to), std::move(memory)};
    }
    // No alarm leaves out a later day by itself: until then single ones stand in for it.
    const auto standIns = days.to.wholeDay() <= today.adding(longestRest * 24 * 60)
        ? ringingBefore(items, days.from.wholeDay(), around)
        : std::vector<std::string>();
    if (!standIns.empty()) {
        const std::string& title = items.front().thing.title;
        memory.alarms.severalEnded = AlarmReply::rested(items, days, around);
        memory.alarms.series = {.left = standIns, .name = title == "Alarm" ? "" : title};
        return {calls.cancelUntil(idsOf(items), days.to), std::move(memory)};
    }
    const AlarmItem& item = apart == items.end() ? items.front() : *apart;
    const std::string others =
        items.size() > 1 ? " Then all of these are cancelled: " + AlarmReply::joined(items, around) + "." : "";
    const std::string ring = apart == items.end()
        ? withUpperCaseFirst(item.named(around)) + " goes on and on."
        : "I can't leave out " + item.named(around) + " just " + days.words + ".";
    return askFirst(
        calls.cancelThese(idsOf(items)), ring + " Should I cancel it for good?" + others, std::move(memory));
}

std::optional<RuleStep> AlarmRest::moveOnce(
    const AlarmItem& item, const std::string& when, RequestMemory memory, const RuleSurroundings& around)
{
    std::string rest;
    auto days = SpokenDays::find(SpokenPhrase::withDigits(when), around, rest);
    const auto clock = days && days->isOneDay() ? AlarmHours::takeClock(rest) : std::nullopt;
    if (!clock || !item.ringsOn(*days, around) || SpokenRepeat::read(when))
        return std::nullopt;
    const std::string day = days->from.wholeDay().text();
    const bool isOpen = clock->isOpen && item.thing.start->hour < 12;
    auto times = ringingBefore({item}, days->from.wholeDay(), around);
    times.push_back("at " + SpokenWhen::clock(DateParts{2000, 1, 1, clock->from / 60, clock->from % 60})
        + (clock->isOpen && !isOpen ? " in the evening" : "") + " on " + day);
    memory.alarms.severalEnded = AlarmReply::rested({item}, *days, around);
    memory.alarms.series = {.left = times, .name = item.thing.title == "Alarm" ? "" : item.thing.title};
    const auto call = AlarmCalls{around}.cancelUntil({item.thing.id}, days->to);
    return RuleStep{call, std::move(memory)};
}

} // namespace quorvell
