// SPDX-License-Identifier: MIT
// Times of day as people say them: "half past six", "five o'clock", "twenty to three".
#include "Understanding/time/SpokenTimeReaders.h"

#include <array>
#include <cstdio>

namespace quorvell {

namespace {

constexpr int minutesInHour = 60;

/// A time of day found in words, before it is decided how it is written.
struct Clock {
    int hour = 0;
    int minute = 0;
    std::size_t words = 0;
    bool isCertain = false; ///< Said in a way that only times are ("half past six", "five o'clock").
};

std::string digitsOf(const Clock& clock)
{
    std::array<char, 32> text{};
    std::snprintf(
        text.data(), text.size(), clock.minute == 0 && clock.hour <= 12 ? "%d" : "%d:%02d", clock.hour, clock.minute);
    return text.data();
}

/// "half past six", "a quarter to seven", "ten minutes past nine", "twenty to three".
std::optional<Clock> distanceAt(const SpokenWords& words, std::size_t place, bool isAfterAt)
{
    std::size_t next = place + (words.at(place) == "a" && words.at(place + 1) == "quarter" ? 1 : 0);
    int minutes = 0;
    bool isCertain = true;
    if (words.at(next) == "half" || words.at(next) == "quarter") {
        minutes = words.at(next++) == "half" ? 30 : 15;
    } else if (const auto number = words.cardinal(next); number && number->value < 30) {
        minutes = number->value;
        next += number->words;
        isCertain = words.at(next) == "minutes" || isAfterAt;
        next += words.at(next) == "minutes" ? 1U : 0U;
    }
    // "The second one to eight", "number two to eight": that says which one, and no minutes.
    if (!isCertain && (minutes == 1 || (place > 0 && words.at(place - 1) == "number"))) {
        return std::nullopt;
    }
    const std::string_view link = words.at(next);
    const bool isTo = link == "to" || link == "before";
    const auto hour = words.hour(next + 1);
    if (minutes == 0 || !hour || (!isTo && link != "past" && link != "after") || (isTo && minutes == 30)) {
        return std::nullopt;
    }
    const std::size_t end = next + 2;
    // "five to six people", "ten to one odds"; "five past six" is always a time.
    if (words.isCounted(end) || (!isCertain && isTo && end < words.size() && !words.isTimeWord(end))) {
        return std::nullopt;
    }
    if (!isTo) {
        return Clock{hour->value, minutes, end - place, true};
    }
    return Clock{hour->value == 1 ? 12 : hour->value - 1, minutesInHour - minutes, end - place, true};
}

/// "seventeen hundred", "eighteen thirty", "oh eight hundred".
std::optional<Clock> wholeDayClockAt(const SpokenWords& words, std::size_t place, bool isAfterAt)
{
    const bool isEarly = words.at(place) == "oh" || words.at(place) == "zero";
    const auto hour = isEarly ? words.small(place + 1) : words.cardinal(place);
    if (!hour || hour->value > 23 || (isEarly && hour->value > 9) || (!isEarly && hour->value < 13)) {
        return std::nullopt;
    }
    std::size_t end = place + hour->words + (isEarly ? 1 : 0);
    Clock clock{hour->value, 0, 0, true};
    if (words.at(end) == "hundred" && (isAfterAt || !words.at(end + 1).empty() || place == 0)) {
        ++end;
        end += words.at(end) == "hours" ? 1U : 0U;
    } else if (const auto minute = words.minute(end)) {
        clock.minute = minute->value;
        end += minute->words;
    } else {
        return std::nullopt;
    }
    const bool isTime = isAfterAt || place == 0 || words.isTimeWord(place - 1) || words.isTimeWord(end);
    clock.words = end - place;
    return isTime && !words.isCounted(end) ? std::optional(clock) : std::nullopt;
}

/// "five", "five o'clock", "five thirty", "seven oh five".
std::optional<Clock> plainAt(const SpokenWords& words, std::size_t place)
{
    const auto hour = words.hour(place);
    if (!hour) {
        return std::nullopt;
    }
    const std::size_t next = place + 1;
    if (words.at(next) == "o'clock" || words.at(next) == "oclock") {
        return Clock{hour->value, 0, 2, true};
    }
    if ((words.at(next) == "o" || words.at(next) == "oh") && words.at(next + 1) == "clock") {
        return Clock{hour->value, 0, 3, true};
    }
    if (const auto minute = words.minute(next)) {
        return Clock{hour->value, minute->value, 1 + minute->words, false};
    }
    return Clock{hour->value, 0, 1, false};
}

/// The small hours are "at night" too, but readers of times take night for the evening.
bool isSmallHourAtNight(const Clock& clock, const SpokenWords& words, std::size_t end)
{
    return (clock.hour <= 4 || clock.hour == 12) && words.haveAt(end, {"at", "night"});
}

bool isPlaceForTime(const SpokenWords& words, std::size_t place, std::size_t end)
{
    const bool isAfter = place > 0
        && (words.isTimeWord(place - 1) || words.at(place - 1) == "for" || words.at(place - 1) == "it"
            || words.at(place - 1) == "until" || words.at(place - 1) == "till" || words.at(place - 1) == "before");
    return isAfter || place == 0 || words.isTimeWord(end);
}

std::optional<WrittenTime> noonAt(const SpokenWords& words, std::size_t place)
{
    const bool isTwelve = words.at(place) == "twelve" || words.at(place) == "12";
    const std::string_view next = words.at(place + 1);
    if (isTwelve && (next == "noon" || next == "midday" || next == "midnight")) {
        return WrittenTime{std::string(next), 2};
    }
    return std::nullopt;
}

} // namespace

std::optional<WrittenTime> spokenClockAt(const SpokenWords& words, std::size_t place)
{
    // "at", "by" and what softens them
    const bool isAfterAt = words.at(place) == "at" || words.at(place) == "by";
    const bool isAround = words.at(place) == "around";
    std::size_t start = place + (isAfterAt || isAround ? 1 : 0);
    start += isAfterAt && (words.at(start) == "around" || words.at(start) == "about") ? 1U : 0U;
    const std::string link = isAfterAt ? std::string(words.at(place)) + ' ' : std::string();

    if (const auto noon = noonAt(words, start)) {
        return WrittenTime{link + noon->text, start - place + noon->words};
    }
    std::optional<Clock> clock = distanceAt(words, start, isAfterAt || isAround);
    if (!clock) {
        clock = wholeDayClockAt(words, start, isAfterAt || isAround);
    }
    if (!clock) {
        clock = plainAt(words, start);
    }
    // "Half seven" is for those who read what is written: it is not seven.
    if (start > 0 && words.at(start - 1) == "half" && start == place) {
        return std::nullopt;
    }
    if (!clock || (place > 0 && (words.at(place - 1) == "one" || words.at(place - 1) == "two") && isAfterAt)) {
        return std::nullopt; // "one by one"
    }
    const std::size_t end = start + clock->words;
    const bool isInDigits =
        clock->words == 1 && words.at(start).find_first_not_of("0123456789") == std::string_view::npos;
    if (const auto half = words.halfOfDay(end)) {
        if (isInDigits && half->words == 1) {
            return std::nullopt; // written already
        }
        const std::string_view marker = clock->hour > 12 ? "" : half->isAfternoon ? " pm" : " am";
        return WrittenTime{link + digitsOf(*clock).append(marker), end - place + half->words};
    }
    const bool isBare = clock->minute == 0 && clock->hour <= 12;
    const bool isTime = clock->isCertain
        || (!isInDigits && !words.isCounted(end)
            && (isAfterAt || isAround
                || (isBare ? words.isTimeWord(end) && !words.isWeekday(end) : isPlaceForTime(words, start, end))));
    if (!isTime) {
        return std::nullopt;
    }
    if (isSmallHourAtNight(*clock, words, end)) {
        return WrittenTime{link + digitsOf(*clock) + " am", end + 2 - place};
    }
    const std::string before = !link.empty() ? link : isBare ? std::string("at ") : std::string();
    return WrittenTime{before + digitsOf(*clock), end - place};
}

} // namespace quorvell
