// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmItem.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr ToolResults::ThingForm form{"alarms", "task", "date"};

std::string withLowerCaseStart(const std::string& text)
{
    return lowerCased(firstCharacters(text, 1)) + text.substr(firstCharacters(text, 1).size());
}

} // namespace

AlarmItem AlarmItem::of(const Json& item)
{
    AlarmItem read{.thing = ToolResults::thing(item, form)};
    read.isTimer = readString(item, "kind") == "timer";
    read.isPaused = readBool(item, "paused").value_or(false);
    read.isMissed = readBool(item, "overdue").value_or(false);
    read.wasSetLast = readBool(item, "set_last").value_or(false);
    read.left = std::chrono::seconds(
        std::clamp<std::int64_t>(readInteger(item, "remaining_seconds").value_or(0), 0, 1'000'000));
    read.rule = ReminderRepeat::fromStored(readString(item, "repeat").value_or(""));
    read.thing.repeats = read.thing.repeats || read.rule;
    read.often = withLowerCaseStart(readString(item, "repeat_words").value_or(""));
    return read;
}

std::vector<AlarmItem> AlarmItem::listed(const Json& result)
{
    constexpr std::size_t most = 100;
    std::vector<AlarmItem> items;
    const Json* list = memberOf(result, "reminders");
    if (!list || !list->is_array())
        return items;
    for (const Json& item : *list) {
        AlarmItem next = of(item);
        if (!next.thing.id.empty() && items.size() < most)
            items.push_back(std::move(next));
    }
    return items;
}

std::string AlarmItem::when(const LocalTime& around) const
{
    if (!thing.start)
        return {};
    const std::string clock = SpokenWhen::clock(*thing.start);
    if (!often.empty())
        return clock + " " + often;
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    const DateParts day = thing.start->wholeDay();
    if (day == today)
        return clock + " today";
    if (day == DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(1)), around.calendar))
        return clock + " tomorrow";
    return clock + " " + SpokenWhen::on(SpokenWhen::dateSeenFrom(day, around));
}

std::string AlarmItem::described(const LocalTime& around) const
{
    if (isTimer)
        return named(around);
    const bool isNamed = !thing.title.empty() && thing.title != "Alarm";
    return (isNamed ? thing.title + ", " : "") + when(around) + (isMissed ? ", missed" : "");
}

std::string AlarmItem::named(const LocalTime& around) const
{
    if (isTimer)
        return "the " + (thing.title.empty() ? "timer" : withLowerCaseStart(thing.title));
    const bool isNamed = !thing.title.empty() && thing.title != "Alarm";
    const std::string time = when(around);
    return "the alarm" + (isNamed ? " \"" + thing.title + "\"" : "") + (time.empty() ? "" : " for " + time);
}

bool AlarmItem::ringsOn(const SpokenDays& days, const LocalTime& around) const
{
    constexpr int mostDays = 14;
    constexpr std::int64_t dayOfMinutes = 24 * 60;
    if (!thing.start)
        return false;
    if (days.hold(*thing.start))
        return true;
    if (!rule)
        return false;
    DateParts day = *thing.start;
    for (int step = 0; step < mostDays; ++step) { // A rule by months or years hardly belongs to an alarm.
        const auto local = Calendar::dayOf(day.year, day.month, day.day);
        const int weekday = local ? Calendar::weekday(*local) : 0;
        const bool isRule = rule->kind == ReminderRepeat::Kind::daily
            || (rule->kind == ReminderRepeat::Kind::weekdays && weekday > 1 && weekday < 7)
            || (rule->kind == ReminderRepeat::Kind::weekly
                && std::ranges::find(rule->weekdays, weekday) != rule->weekdays.end());
        if (isRule && days.hold(day) && day.instant(around.calendar))
            return true;
        day = day.adding(dayOfMinutes);
    }
    return false;
}

} // namespace quorvell
