// SPDX-License-Identifier: MIT
// Stretches of time as people say them: "in twenty five minutes", "an hour and a half from now".
#include "Understanding/time/SpokenTimeReaders.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr int minutesInHour = 60;

struct Unit {
    std::string_view singular;
    std::string_view plural;
    int minutes;
};

constexpr std::array<Unit, 4> units{{{"minute", "minutes", 1}, {"hour", "hours", minutesInHour},
    {"day", "days", 24 * minutesInHour}, {"week", "weeks", 7 * 24 * minutesInHour}}};

const Unit* unitAt(const SpokenWords& words, std::size_t place)
{
    const auto found = std::find_if(units.begin(), units.end(),
        [word = words.at(place)](const Unit& unit) { return word == unit.singular || word == unit.plural; });
    return found == units.end() ? nullptr : found;
}

struct Span {
    std::string text;
    std::size_t words = 0;
};

std::string written(int amount, const Unit& unit)
{
    return std::to_string(amount) + ' ' + std::string(amount == 1 ? unit.singular : unit.plural);
}

/// "a quarter of an hour", "three quarters of an hour", "a half hour".
std::optional<Span> partOfHourAt(const SpokenWords& words, std::size_t place)
{
    if (words.haveAt(place, {"a", "quarter", "of", "an", "hour"})) {
        return Span{"15 minutes", 5};
    }
    if (words.haveAt(place, {"three", "quarters", "of", "an", "hour"})) {
        return Span{"45 minutes", 5};
    }
    if (words.haveAt(place, {"a", "half", "hour"})) {
        return Span{"30 minutes", 3};
    }
    return words.haveAt(place, {"half", "an", "hour"}) ? std::optional(Span{"30 minutes", 3}) : std::nullopt;
}

/// A half or some minutes more: "an hour and a half", "two hours and twenty minutes", "two and a half hours".
std::optional<Span> hoursAndMoreAt(const SpokenWords& words, std::size_t place)
{
    const bool isArticle = words.at(place) == "an" || words.at(place) == "a";
    const auto number = isArticle ? std::optional(SpokenNumber{1, 1}) : words.cardinal(place);
    if (!number) {
        return std::nullopt;
    }
    const std::size_t next = place + number->words;
    const Unit& minute = units[0];
    const int wholeMinutes = number->value * minutesInHour;
    if (words.haveAt(next, {"and", "a", "half", "hours"})) {
        return Span{written(wholeMinutes + 30, minute), number->words + 4};
    }
    if (words.at(next) != "hour" && words.at(next) != "hours") {
        return std::nullopt;
    }
    if (words.haveAt(next + 1, {"and", "a", "half"})) {
        return Span{written(wholeMinutes + 30, minute), number->words + 4};
    }
    if (words.haveAt(next + 1, {"and", "a", "quarter"})) {
        return Span{written(wholeMinutes + 15, minute), number->words + 4};
    }
    const std::size_t more = next + (words.at(next + 1) == "and" ? 2 : 1);
    const auto minutes = words.cardinal(more);
    if (minutes && unitAt(words, more + minutes->words) == &minute) {
        return Span{written(wholeMinutes + minutes->value, minute), more + minutes->words + 1 - place};
    }
    return std::nullopt;
}

/// "twenty five minutes", "a couple of hours". Readers know "a" and "one" as they are.
std::optional<Span> amountAt(const SpokenWords& words, std::size_t place)
{
    if (words.haveAt(place, {"a", "couple", "of"}) && unitAt(words, place + 3)) {
        return Span{written(2, *unitAt(words, place + 3)), 4};
    }
    const auto number = words.cardinal(place);
    const Unit* unit = number ? unitAt(words, place + number->words) : nullptr;
    if (unit && (number->value > 1 || number->words > 1)) {
        return Span{written(number->value, *unit), number->words + 1};
    }
    return std::nullopt;
}

/// "a week from today" and "from now" come after the amount, "in" before it.
std::optional<WrittenTime> fromNow(const SpokenWords& words, std::size_t place, const Span& span)
{
    const std::size_t end = place + span.words;
    if (words.haveAt(end, {"from", "now"}) || words.haveAt(end, {"from", "today"})) {
        return WrittenTime{"in " + span.text, span.words + 2};
    }
    return std::nullopt;
}

} // namespace

std::optional<WrittenTime> spokenSpanAt(const SpokenWords& words, std::size_t place)
{
    const bool isIn = words.at(place) == "in";
    const std::size_t start = place + (isIn ? 1 : 0);
    const bool isHalfHour = words.at(start) == "half";
    std::optional<Span> span = partOfHourAt(words, start);
    if (!span) {
        span = hoursAndMoreAt(words, start);
    }
    const bool isBroken = span && !isHalfHour;
    if (!span) {
        span = amountAt(words, start);
    }
    const bool isSingle = !span && (words.at(start) == "a" || words.at(start) == "an" || words.at(start) == "one")
        && unitAt(words, start + 1) != nullptr;
    if (isSingle) {
        span = Span{written(1, *unitAt(words, start + 1)), 2};
    }
    if (!span) {
        return std::nullopt;
    }
    if (auto later = fromNow(words, start, *span)) {
        return isIn ? WrittenTime{later->text, later->words + 1} : *later;
    }
    // "half an hour", "an hour" and "one day" are read as they are; a broken amount is only added up where it says
    // when.
    if (isSingle || isHalfHour || (isBroken && !isIn)) {
        return std::nullopt;
    }
    return WrittenTime{(isIn ? "in " : "") + span->text, span->words + (isIn ? 1 : 0)};
}

} // namespace quorvell
