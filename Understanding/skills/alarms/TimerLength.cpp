// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/TimerLength.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenWords.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace quorvell {

namespace {

constexpr std::chrono::seconds longest = std::chrono::hours(24 * 7);

/// "10m" and "ten-minute" as two words, so that number and unit are read alike.
std::string opened(std::string_view words)
{
    static const Pattern glued("(\\d)(?=(?:h|m|s|hrs?|mins?|secs?|hours?|minutes?|seconds?)\\b)", Pattern::caseless);
    static const Pattern hyphen("(?<=[a-z\\d])-(?=(?:hour|hr|minute|min|second|sec)s?\\b)", Pattern::caseless);
    std::string text = hyphen.replaceAll(words, " ");
    std::size_t added = 0;
    const std::string apart = text;
    for (const auto& match : glued.findAll(apart))
        text.insert(match.range.end + added++, " ");
    return text;
}

/// Of the unit at that word; 0 where there is none.
int secondsOfUnit(std::string_view word)
{
    struct Row {
        std::string_view word;
        int seconds;
    };
    static constexpr auto rows = std::to_array<Row>({{"second", 1}, {"seconds", 1}, {"sec", 1}, {"secs", 1}, {"s", 1},
        {"minute", 60}, {"minutes", 60}, {"min", 60}, {"mins", 60}, {"m", 60}, {"minuts", 60}, {"minuets", 60},
        {"mintues", 60}, {"minites", 60}, {"hour", 3600}, {"hours", 3600}, {"hr", 3600}, {"hrs", 3600}, {"h", 3600}});
    for (const Row& row : rows)
        if (row.word == word)
            return row.seconds;
    return 0;
}

struct Amount {
    double number = 0;
    std::size_t words = 0;
};

/// A number in front of a unit.
Amount amountAt(const SpokenWords& words, std::size_t place)
{
    static const Pattern digits("^\\d{1,6}(?:\\.\\d{1,2})?$");
    const std::string_view word = words.at(place);
    if (digits.find(word)) {
        const double number = std::strtod(std::string(word).c_str(), nullptr);
        if (words.haveAt(place + 1, {"and", "a", "half"}))
            return {number + 0.5, 4};
        return {number, 1};
    }
    if (words.haveAt(place, {"half", "an"}) || words.haveAt(place, {"half", "a"}))
        return {0.5, 2};
    if (words.haveAt(place, {"a", "half"}))
        return {0.5, 2};
    if (words.haveAt(place, {"three", "quarters", "of", "an"}))
        return {0.75, 4};
    if (words.haveAt(place, {"a", "quarter", "of", "an"}))
        return {0.25, 4};
    if (words.haveAt(place, {"quarter", "of", "an"}))
        return {0.25, 3};
    if (words.haveAt(place, {"a", "couple", "of"}))
        return {2, 3};
    if (const auto number = words.cardinal(place)) {
        const std::size_t next = place + number->words;
        if (words.haveAt(next, {"and", "a", "half"}))
            return {number->value + 0.5, number->words + 3};
        return {static_cast<double>(number->value), number->words};
    }
    return word == "a" || word == "an" || word == "another" ? Amount{1, 1} : Amount{};
}

struct Part {
    double seconds = 0;
    std::size_t words = 0;
};

/// "An hour and a half", "30 minutes".
Part partAt(const SpokenWords& words, std::size_t place)
{
    const Amount amount = amountAt(words, place);
    const bool hasMore = words.at(place + amount.words) == "more" || words.at(place + amount.words) == "extra";
    const std::size_t unitPlace = place + amount.words + (hasMore ? 1 : 0);
    const int unit = amount.words > 0 ? secondsOfUnit(words.at(unitPlace)) : 0;
    if (unit == 0)
        return {};
    Part part{amount.number * unit, unitPlace + 1 - place};
    if (words.haveAt(place + part.words, {"and", "a", "half"}))
        return {part.seconds + 0.5 * unit, part.words + 3};
    if (words.haveAt(place + part.words, {"and", "a", "quarter"}))
        return {part.seconds + 0.25 * unit, part.words + 3};
    return part;
}

/// The "20" of "1 hour 20", as the next smaller unit.
Part bareAt(const SpokenWords& words, std::size_t place)
{
    constexpr int parts = 60;
    const int unit = secondsOfUnit(words.at(place - 1));
    const std::size_t first = words.at(place) == "and" ? place + 1 : place;
    const Amount amount = amountAt(words, first);
    const std::string_view behind = words.at(first + amount.words);
    const bool isLast =
        behind.empty() || behind == "for" || behind == "called" || behind == "named" || behind == "please";
    if (unit < parts || amount.words == 0 || amount.number < 2 || amount.number >= parts || !isLast)
        return {};
    return {amount.number * unit / parts, first + amount.words - place};
}

std::string joined(const SpokenWords& words, std::size_t first, std::size_t end)
{
    std::string text;
    for (std::size_t place = first; place < end; ++place)
        text += words.original(place);
    return trimmed(text);
}

} // namespace

std::optional<TimerLength> TimerLength::read(std::string_view said)
{
    if (RequestText::isStory(said))
        return std::nullopt;
    const SpokenWords words(opened(said));
    for (std::size_t start = 0; start < words.size(); ++start) {
        double seconds = 0;
        std::size_t end = start;
        for (Part part = partAt(words, start); part.words > 0;) {
            seconds += part.seconds;
            end += part.words;
            const Part bare = bareAt(words, end);
            seconds += bare.seconds;
            end += bare.words;
            const std::size_t next = words.at(end) == "and" ? end + 1 : end;
            part = partAt(words, next);
            end = part.words > 0 ? next : end;
        }
        if (end == start)
            continue;
        const std::chrono::seconds length(static_cast<std::int64_t>(seconds));
        if (length.count() < 1 || seconds > static_cast<double>(longest.count()))
            return std::nullopt;
        return TimerLength{length, trimmed(joined(words, 0, start) + " " + joined(words, end, words.size()))};
    }
    return std::nullopt;
}

std::string TimerLength::spoken(std::chrono::seconds length)
{
    constexpr int minute = 60;
    const auto total = length.count();
    const auto hours = total / (minute * minute);
    std::vector<std::string> parts;
    const auto add = [&](std::int64_t count, const char* unit) {
        if (count > 0)
            parts.push_back(std::to_string(count) + " " + unit + (count == 1 ? "" : "s"));
    };
    add(hours, "hour");
    add(total / minute % minute, "minute");
    if (hours == 0) // Nobody waits hours to the second.
        add(total % minute, "second");
    if (parts.empty())
        return "less than a second";
    std::string text = parts.front();
    for (std::size_t index = 1; index < parts.size(); ++index)
        text += (index + 1 < parts.size() ? ", " : " and ") + parts[index];
    return text;
}

} // namespace quorvell
