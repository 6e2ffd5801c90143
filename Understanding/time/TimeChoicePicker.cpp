// SPDX-License-Identifier: MIT
#include "Understanding/time/TimeChoicePicker.h"

#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <string>

namespace quorvell {

namespace {

enum class Half { unknown, morning, afternoon };

struct Clock {
    int hour = 0;
    int minute = 0;

    bool operator==(const Clock&) const = default;
};

int number(std::string_view digits)
{
    int value = 0;
    for (const char digit : digits)
        value = value * 10 + (digit - '0');
    return value;
}

std::optional<Clock> clockOf(const TimeChoice& choice)
{
    return choice.date.allDay ? std::nullopt : std::optional(Clock{choice.date.hour, choice.date.minute});
}

Half halfOf(Clock clock)
{
    return clock.hour < 12 ? Half::morning : Half::afternoon;
}

Half halfNamed(const std::string& words)
{
    static const Pattern morning("\\b(?:morning|a\\.m\\.|early)|(?<![a-z])am\\b|\\d\\s*am\\b", Pattern::caseless);
    static const Pattern afternoon(
        "\\b(?:afternoon|evening|night|tonight|p\\.m\\.|after lunch)|(?<![a-z])pm\\b|\\d\\s*pm\\b", Pattern::caseless);
    const bool isMorning = morning.find(words).has_value();
    const bool isAfternoon = afternoon.find(words).has_value();
    if (isMorning == isAfternoon)
        return Half::unknown;
    return isMorning ? Half::morning : Half::afternoon;
}

/// Which one by its place: 0 is the first, -1 the last.
std::optional<int> placeNamed(const std::string& words)
{
    static const Pattern first("\\b(?:first|1st|earlier|earliest|former)\\b", Pattern::caseless);
    static const Pattern second("\\b(?:second|2nd)\\b", Pattern::caseless);
    static const Pattern third("\\b(?:third|3rd)\\b", Pattern::caseless);
    static const Pattern last("\\b(?:last|latter|later|latest)\\b", Pattern::caseless);
    if (first.find(words))
        return 0;
    if (second.find(words))
        return 1;
    if (third.find(words))
        return 2;
    return last.find(words) ? std::optional(-1) : std::nullopt;
}

std::optional<Clock> clockNamed(const std::string& words)
{
    static const Pattern form("\\b(\\d{1,2})(?:[:.](\\d{2}))?(?!\\d|(?:st|nd|rd|th)\\b)", Pattern::caseless);
    static const Pattern noon("\\b(?:noon|midday)\\b", Pattern::caseless);
    static const Pattern midnight("\\bmidnight\\b", Pattern::caseless);
    if (noon.find(words))
        return Clock{12, 0};
    if (midnight.find(words))
        return Clock{0, 0};
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const Clock clock{number(match->texts[0]), number(match->texts[1])};
    return clock.hour < 24 && clock.minute < 60 ? std::optional(clock) : std::nullopt;
}

Clock inHalf(Clock clock, Half half)
{
    if (half == Half::afternoon && clock.hour < 12)
        clock.hour += 12;
    if (half == Half::morning && clock.hour == 12)
        clock.hour = 0;
    return clock;
}

DateParts withClock(const TimeChoice& choice, Clock clock)
{
    DateParts date = choice.date;
    date.hour = clock.hour;
    date.minute = clock.minute;
    date.allDay = false;
    return date;
}

std::optional<DateParts> byPlace(int place, const std::vector<TimeChoice>& choices)
{
    const std::size_t index = place < 0 ? choices.size() - 1 : static_cast<std::size_t>(place);
    return index < choices.size() ? std::optional(choices[index].date) : std::nullopt;
}

std::optional<DateParts> byClock(Clock clock, Half half, const std::vector<TimeChoice>& choices)
{
    const bool isOpen = half == Half::unknown && clock.hour >= 1 && clock.hour <= 11;
    if (isOpen)
        return std::nullopt;
    clock = inHalf(clock, half);
    const auto same = std::ranges::find_if(choices, [&](const TimeChoice& choice) { return clockOf(choice) == clock; });
    if (same != choices.end())
        return same->date;
    // Another time than those asked about: on the day of the choice in the same half of the day.
    const auto day = std::ranges::find_if(choices, [&](const TimeChoice& choice) {
        const auto other = clockOf(choice);
        return other && halfOf(*other) == halfOf(clock);
    });
    return withClock(day != choices.end() ? *day : choices.front(), clock);
}

std::optional<DateParts> byHalf(Half half, const std::vector<TimeChoice>& choices)
{
    const auto fits = [half](const TimeChoice& choice) {
        const auto clock = clockOf(choice);
        return clock && halfOf(*clock) == half;
    };
    if (std::ranges::count_if(choices, fits) != 1)
        return std::nullopt;
    return std::ranges::find_if(choices, fits)->date;
}

} // namespace

std::optional<DateParts> TimeChoicePicker::pick(std::string_view spoken, const std::vector<TimeChoice>& choices)
{
    const std::string words(spoken);
    if (choices.empty())
        return std::nullopt;
    const Half half = halfNamed(words);
    const auto place = placeNamed(words); // Before the clock: "the first one" may be written with a digit.
    if (place && half == Half::unknown)
        return byPlace(*place, choices);
    if (const auto clock = clockNamed(words))
        return byClock(*clock, half, choices);
    return half != Half::unknown ? byHalf(half, choices) : std::nullopt;
}

} // namespace quorvell
