// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/acting/ToldSeries.h"

#include "Understanding/time/SpokenWhen.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <set>

namespace quorvell {

namespace {

constexpr int daysOfWeek = 7;
constexpr std::array<const char*, daysOfWeek> dayNames{
    "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
const std::set<int> workdays{0, 1, 2, 3, 4}; ///< By their places in `dayNames`.

std::chrono::sys_days dayOf(const DateParts& parts)
{
    return std::chrono::year(parts.year) / parts.month / parts.day;
}

int placeInWeek(const DateParts& parts)
{
    return static_cast<int>(std::chrono::weekday(dayOf(parts)).iso_encoding()) - 1;
}

std::string joined(const std::set<int>& days, const char* ending)
{
    std::string text;
    std::size_t place = 0;
    for (const int day : days) {
        text += place == 0 ? "" : place + 1 == days.size() ? " and " : ", ";
        text += std::string(dayNames[static_cast<std::size_t>(day)]) + ending;
        ++place;
    }
    return text;
}

/// Within one week every day is named once.
std::string withinWeek(const std::vector<DateParts>& times, const std::set<int>& days)
{
    constexpr std::size_t leastForStretch = 3;
    const bool isStretch = (dayOf(times.back()) - dayOf(times.front())).count() + 1 == static_cast<int>(times.size());
    if (isStretch && times.size() >= leastForStretch)
        return std::string("from ") + dayNames[static_cast<std::size_t>(placeInWeek(times.front()))] + " to "
            + dayNames[static_cast<std::size_t>(placeInWeek(times.back()))];
    return "on " + joined(days, "");
}

/// No such day between the first and the last time is left out.
bool isEveryWeek(const std::vector<DateParts>& times, const std::set<int>& days)
{
    std::size_t due = 0;
    for (auto day = dayOf(times.front()); day <= dayOf(times.back()); day += std::chrono::days(1))
        due += days.contains(static_cast<int>(std::chrono::weekday(day).iso_encoding()) - 1) ? 1U : 0U;
    return due == times.size();
}

} // namespace

std::string ToldSeries::keyOf(const FoundThing& thing)
{
    if (!thing.repeats || !thing.start)
        return thing.id + (thing.start ? " " + thing.start->text() : "") + " " + thing.title;
    return thing.id.substr(0, thing.id.find('#')) + " " + SpokenWhen::clock(*thing.start) + " " + thing.title;
}

std::vector<DateParts> ToldSeries::timesOf(const FoundThing& first, const std::vector<FoundThing>& things)
{
    std::vector<DateParts> times;
    const std::string key = keyOf(first);
    for (const FoundThing& thing : things)
        if (thing.start && keyOf(thing) == key)
            times.push_back(*thing.start);
    return times;
}

std::string ToldSeries::when(const std::vector<DateParts>& times)
{
    if (times.empty())
        return "";
    const std::string clock = SpokenWhen::clock(times.front());
    const std::string at = clock.empty() ? "" : " at " + clock;
    if (times.size() == 1)
        return SpokenWhen::on(SpokenWhen::date(times.front()));
    std::set<int> days;
    for (const DateParts& time : times)
        days.insert(placeInWeek(time));
    const bool isWithinWeek = (dayOf(times.back()) - dayOf(times.front())).count() < daysOfWeek;
    if (isWithinWeek)
        return withinWeek(times, days) + at;
    if (!isEveryWeek(times, days))
        return std::to_string(times.size()) + " times, first " + SpokenWhen::on(SpokenWhen::date(times.front()));
    return (days.size() == daysOfWeek ? "every day"
                   : days == workdays ? "on weekdays"
                                      : "on " + joined(days, "s"))
        + at;
}

void ToldSeries::keepFirstTimes(std::vector<FoundThing>& things)
{
    std::set<std::string> known;
    std::erase_if(things, [&](const FoundThing& thing) { return !known.insert(keyOf(thing)).second; });
}

} // namespace quorvell
