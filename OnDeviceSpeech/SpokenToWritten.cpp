#include "OnDeviceSpeech/SpokenToWritten.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

using Words = std::vector<std::string>;

constexpr std::array<std::string_view, 20> cardinals{"", "one", "two", "three", "four", "five", "six", "seven", "eight",
    "nine", "ten", "eleven", "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen",
    "nineteen"};
constexpr std::array<std::string_view, 20> ordinals{"", "first", "second", "third", "fourth", "fifth", "sixth",
    "seventh", "eighth", "ninth", "tenth", "eleventh", "twelfth", "thirteenth", "fourteenth", "fifteenth", "sixteenth",
    "seventeenth", "eighteenth", "nineteenth"};
constexpr std::array<std::string_view, 10> tens{
    "", "", "twenty", "thirty", "forty", "fifty", "sixty", "seventy", "eighty", "ninety"};
constexpr std::array<std::string_view, 12> months{"january", "february", "march", "april", "may", "june", "july",
    "august", "september", "october", "november", "december"};
constexpr std::array<std::string_view, 10> units{
    "minute", "minutes", "hour", "hours", "day", "days", "week", "weeks", "months", "years"};

template <std::size_t size> int placeIn(const std::array<std::string_view, size>& list, std::string_view word)
{
    const auto found = std::find(list.begin(), list.end(), word);
    return found == list.end() || found->empty() ? 0 : static_cast<int>(found - list.begin());
}

template <std::size_t size> bool holds(const std::array<std::string_view, size>& list, std::string_view word)
{
    return std::find(list.begin(), list.end(), word) != list.end();
}

struct Number {
    int value = 0;
    std::size_t words = 0; ///< How many it takes.
};

std::string_view wordAt(const Words& words, std::size_t index)
{
    return index < words.size() ? std::string_view(words[index]) : std::string_view();
}

/// "seven", "twenty", "twenty five".
std::optional<Number> cardinalAt(const Words& words, std::size_t index)
{
    if (const int small = placeIn(cardinals, wordAt(words, index)); small > 0)
        return Number{small, 1};
    const int ten = placeIn(tens, wordAt(words, index));
    if (ten == 0)
        return std::nullopt;
    const int unit = placeIn(cardinals, wordAt(words, index + 1));
    return unit > 0 && unit < 10 ? Number{ten * 10 + unit, 2} : Number{ten * 10, 1};
}

/// "seventh", "twentieth", "twenty fifth", of days in a month.
std::optional<Number> ordinalAt(const Words& words, std::size_t index)
{
    const std::string_view word = wordAt(words, index);
    if (const int small = placeIn(ordinals, word); small > 0)
        return Number{small, 1};
    if (word == "twentieth" || word == "thirtieth")
        return Number{word == "twentieth" ? 20 : 30, 1};
    const int unit = placeIn(ordinals, wordAt(words, index + 1));
    if (word == "twenty" && unit > 0 && unit < 10)
        return Number{20 + unit, 2};
    if (word == "thirty" && unit == 1)
        return Number{31, 2};
    return std::nullopt;
}

std::string ordinalText(int day)
{
    const bool isTeen = day >= 11 && day <= 13;
    const char* const suffix = isTeen ? "th"
        : day % 10 == 1               ? "st"
        : day % 10 == 2               ? "nd"
        : day % 10 == 3               ? "rd"
                                      : "th";
    return std::to_string(day) + suffix;
}

/// After a month, before "of" and a month, or after "the" where no thing follows that could be counted.
bool isDayOfMonth(const Words& words, std::size_t index, const Number& number)
{
    const std::string_view before = index > 0 ? std::string_view(words[index - 1]) : std::string_view();
    const std::string_view after = wordAt(words, index + number.words);
    if (holds(months, before) || holds(months, after))
        return true;
    if (after == "of")
        return holds(months, wordAt(words, index + number.words + 1));
    if (before == "the" && index > 1 && holds(months, words[index - 2]))
        return true;
    const bool isEnd = after.empty() || after == "at" || after == "to" || after == "in" || after == "by";
    return before == "the" && isEnd && after != "one";
}

Words split(std::string_view text)
{
    Words words;
    std::size_t start = 0;
    while ((start = text.find_first_not_of(' ', start)) != std::string_view::npos) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = end;
    }
    return words;
}

} // namespace

std::string spokenToWritten(std::string_view text)
{
    const Words words = split(text);
    std::string result;
    const auto append = [&result](std::string_view word) { result.append(result.empty() ? "" : " ").append(word); };
    for (std::size_t index = 0; index < words.size();) {
        const auto ordinal = ordinalAt(words, index);
        const auto cardinal = cardinalAt(words, index);
        if (ordinal && isDayOfMonth(words, index, *ordinal)) {
            append(ordinalText(ordinal->value));
            index += ordinal->words;
        } else if (cardinal && holds(units, wordAt(words, index + cardinal->words))) {
            append(std::to_string(cardinal->value));
            index += cardinal->words;
        } else {
            const bool isHalfOfDay = words[index] == "a.m." || words[index] == "p.m.";
            append(isHalfOfDay ? (words[index] == "a.m." ? "am" : "pm") : std::string_view(words[index]));
            ++index;
        }
    }
    return result;
}

} // namespace quorvell
