// SPDX-License-Identifier: MIT
// Days of a month as people say them: "the fifth of march", "march the twenty first".
#include "Understanding/time/SpokenTimeReaders.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

std::string ordinalText(int day)
{
    const bool isTeen = day >= 11 && day <= 13;
    const int last = isTeen ? 0 : day % 10;
    return std::to_string(day) + (last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

/// After "the second" these go on with a sentence; anything else is what it is the second of.
bool canFollowDay(const SpokenWords& words, std::size_t place)
{
    constexpr std::array<std::string_view, 18> following{"", "at", "to", "by", "in", "around", "about", "remind",
        "please", "for", "and", "that", "i", "noon", "midnight", "set", "can", "could"};
    const std::string_view distance = words.at(place + 1);
    const bool isDistance =
        (words.at(place) == "half" || words.at(place) == "quarter") && (distance == "past" || distance == "to");
    return std::find(following.begin(), following.end(), words.at(place)) != following.end() || words.isTimeWord(place)
        || isDistance || !words.after(place - 1).empty();
}

/// "may" and "march" are verbs after these.
bool isVerb(const SpokenWords& words, std::size_t place)
{
    constexpr std::array<std::string_view, 10> subjects{
        "i", "you", "he", "she", "it", "we", "they", "that", "to", "who"};
    const bool canBe = words.at(place) == "may" || words.at(place) == "march";
    return canBe && place > 0 && std::find(subjects.begin(), subjects.end(), words.at(place - 1)) != subjects.end();
}

/// "march fifth", "march the fifth", "march five".
std::optional<WrittenTime> monthFirst(const SpokenWords& words, std::size_t place)
{
    if (words.month(place) == 0 || isVerb(words, place)) {
        return std::nullopt;
    }
    const std::string month(words.at(place));
    const std::size_t next = place + (words.at(place + 1) == "the" ? 2 : 1);
    if (const auto day = words.ordinal(next)) {
        return WrittenTime{month + ' ' + ordinalText(day->value), next - place + day->words};
    }
    const auto number = next == place + 1 ? words.cardinal(next) : std::nullopt;
    if (number && number->value <= 31 && canFollowDay(words, next + number->words)) {
        return WrittenTime{month + ' ' + std::to_string(number->value), 1 + number->words};
    }
    return std::nullopt;
}

} // namespace

std::optional<WrittenTime> spokenDateAt(const SpokenWords& words, std::size_t place)
{
    if (auto date = monthFirst(words, place)) {
        return date;
    }
    const std::size_t start = place + (words.at(place) == "the" ? 1 : 0);
    const auto day = words.ordinal(start);
    if (!day) {
        return std::nullopt;
    }
    const std::size_t end = start + day->words;
    const std::size_t month = end + (words.at(end) == "of" ? 1 : 0);
    if (words.month(month) != 0) {
        return WrittenTime{std::string(words.at(month)) + ' ' + ordinalText(day->value), month + 1 - place};
    }
    // "second", alone and with "the", is more often not a day than one.
    const bool isDay = start > place && canFollowDay(words, end)
        && (place == 0 || words.at(place - 1) == "on" || words.at(place - 1) == "for" || words.at(place - 1) == "by"
            || words.at(place - 1) == "before" || day->value > 3 || words.isTimeWord(place - 1));
    return isDay ? std::optional(WrittenTime{"the " + ordinalText(day->value), end - place}) : std::nullopt;
}

} // namespace quorvell
