// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/AlarmHour.h"

#include <algorithm>
#include <chrono>

namespace quorvell {

namespace {

using std::chrono::hours;

constexpr int noon = 12;

std::optional<Instant> firstIn(
    const std::vector<Instant>& choices, const Calendar& calendar, bool isMorning, std::size_t& index)
{
    const auto found = std::ranges::find_if(
        choices, [&](Instant choice) { return (calendar.parts(choice).hour < noon) == isMorning; });
    index = static_cast<std::size_t>(found - choices.begin());
    return found != choices.end() ? std::optional(*found) : std::nullopt;
}

} // namespace

std::optional<AlarmHour> AlarmHour::of(const std::vector<Instant>& choices, Instant now, const Calendar& calendar)
{
    constexpr int firstMorningHour = 5;
    std::size_t index = 0;
    const auto morning = firstIn(choices, calendar, true, index);
    const auto later = firstIn(choices, calendar, false, index);
    if (!morning || !later)
        return std::nullopt;
    const auto until = *later - now;
    if (calendar.parts(*later).hour - noon < firstMorningHour)
        return until <= hours(12) ? std::optional(AlarmHour{*later, morning}) : std::nullopt;
    const bool isEveningLikely = *later < *morning && until <= hours(4);
    return isEveningLikely ? std::nullopt : std::optional(AlarmHour{*morning, later});
}

AlarmHour AlarmHour::likeBefore(const std::vector<Instant>& choices, Instant before, const Calendar& calendar)
{
    std::size_t index = 0;
    const auto same = firstIn(choices, calendar, calendar.parts(before).hour < noon, index);
    if (!same)
        return {choices.front(), std::nullopt};
    const bool hasOther = choices.size() > 1;
    return {*same, hasOther ? std::optional(choices[index == 0 ? 1 : 0]) : std::nullopt};
}

} // namespace quorvell
