// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenWords.h"

#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quorvell {

namespace {

constexpr std::array<std::string_view, 20> smallNumbers{"", "one", "two", "three", "four", "five", "six", "seven",
    "eight", "nine", "ten", "eleven", "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen",
    "nineteen"};
constexpr std::array<std::string_view, 20> smallOrdinals{"", "first", "second", "third", "fourth", "fifth", "sixth",
    "seventh", "eighth", "ninth", "tenth", "eleventh", "twelfth", "thirteenth", "fourteenth", "fifteenth", "sixteenth",
    "seventeenth", "eighteenth", "nineteenth"};
constexpr std::array<std::string_view, 10> tens{
    "", "", "twenty", "thirty", "forty", "fifty", "sixty", "seventy", "eighty", "ninety"};
constexpr std::array<std::string_view, 13> months{"", "january", "february", "march", "april", "may", "june", "july",
    "august", "september", "october", "november", "december"};
constexpr std::array<std::string_view, 7> weekdays{
    "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};
/// Beside these a number is a time of day.
constexpr std::array<std::string_view, 14> timeWords{"today", "tonight", "tomorrow", "morning", "afternoon", "evening",
    "night", "noon", "midnight", "every", "each", "daily", "sharp", "weekdays"};
/// After these a number counts something, or is no number.
constexpr std::array<std::string_view, 38> countedWords{"of", "or", "other", "others", "more", "people", "men", "women",
    "children", "kids", "percent", "times", "time", "point", "stage", "end", "side", "place", "go", "hundred",
    "thousand", "million", "dollar", "euro", "pound", "cent", "minute", "hour", "day", "week", "month", "year", "foot",
    "feet", "and", "fish", "sheep", "half"};
/// They end like a plural but count nothing.
constexpr std::array<std::string_view, 9> notPlurals{"this", "is", "was", "as", "us", "his", "its", "always", "please"};

template <std::size_t size> int placeIn(const std::array<std::string_view, size>& list, std::string_view word)
{
    const auto found = std::find(list.begin(), list.end(), word);
    return found == list.end() || found->empty() ? 0 : static_cast<int>(found - list.begin());
}

template <std::size_t size> bool holds(const std::array<std::string_view, size>& list, std::string_view word)
{
    return std::find(list.begin(), list.end(), word) != list.end();
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isPunctuation(char c)
{
    return std::string_view(",.;:!?\"()").find(c) != std::string_view::npos;
}

std::optional<int> digits(std::string_view word)
{
    int value = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool isWhole = read.ec == std::errc{} && read.ptr == word.data() + word.size() && word.size() <= 2;
    return isWhole ? std::optional(value) : std::nullopt;
}

} // namespace

SpokenWords::SpokenWords(std::string_view text)
    : m_text(text)
{
    for (std::size_t start = 0; start < m_text.size();) {
        const auto isAt = [&](auto&& test, std::size_t from) {
            return static_cast<std::size_t>(
                std::find_if(m_text.begin() + static_cast<std::ptrdiff_t>(from), m_text.end(), test) - m_text.begin());
        };
        const std::size_t wordStart = isAt([](char c) { return !isSpace(c); }, start);
        const std::size_t end = isAt(isSpace, wordStart);
        append(start, wordStart, end);
        start = end;
    }
}

void SpokenWords::append(std::size_t start, std::size_t wordStart, std::size_t end)
{
    // "twenty-five" is two words; other words keep their hyphens.
    const std::size_t hyphen = m_text.find('-', wordStart);
    if (hyphen < end && hyphen > wordStart) {
        if (placeIn(tens, asciiLowerCased(std::string_view(m_text).substr(wordStart, hyphen - wordStart))) > 0) {
            append(start, wordStart, hyphen);
            append(hyphen, hyphen + 1, end);
            return;
        }
    }
    Word word{{}, start, wordStart, end, end};
    while (word.coreEnd > wordStart && isPunctuation(m_text[word.coreEnd - 1])) {
        --word.coreEnd;
    }
    const std::string whole = asciiLowerCased(std::string_view(m_text).substr(wordStart, end - wordStart));
    if (whole.starts_with("a.m.") || whole.starts_with("p.m.")) {
        word.coreEnd = wordStart + 4;
    }
    word.lower = whole.substr(0, word.coreEnd - wordStart);
    m_words.push_back(std::move(word));
}

std::string_view SpokenWords::at(std::size_t place) const
{
    return place < m_words.size() ? std::string_view(m_words[place].lower) : std::string_view();
}

std::string_view SpokenWords::original(std::size_t place) const
{
    const Word& word = m_words[place];
    return std::string_view(m_text).substr(word.start, word.end - word.start);
}

std::string_view SpokenWords::spaceBefore(std::size_t place) const
{
    const Word& word = m_words[place];
    return std::string_view(m_text).substr(word.start, word.wordStart - word.start);
}

std::string_view SpokenWords::after(std::size_t place) const
{
    const Word& word = m_words[place];
    return std::string_view(m_text).substr(word.coreEnd, word.end - word.coreEnd);
}

bool SpokenWords::areJoined(std::size_t first, std::size_t end) const
{
    for (std::size_t place = first; place + 1 < end; ++place) {
        if (!after(place).empty()) {
            return false;
        }
    }
    return true;
}

bool SpokenWords::haveAt(std::size_t place, std::initializer_list<std::string_view> words) const
{
    return std::all_of(words.begin(), words.end(), [&](std::string_view word) { return at(place++) == word; });
}

std::optional<SpokenNumber> SpokenWords::small(std::size_t place) const
{
    const int value = placeIn(smallNumbers, at(place));
    return value > 0 ? std::optional(SpokenNumber{value, 1}) : std::nullopt;
}

std::optional<SpokenNumber> SpokenWords::cardinal(std::size_t place) const
{
    SpokenNumber number;
    const auto hundreds = small(place);
    const bool isHundreds = at(place + 1) == "hundred" && (hundreds ? hundreds->value < 10 : at(place) == "a");
    if (isHundreds) {
        number = {100 * (hundreds ? hundreds->value : 1), 2};
        place += at(place + 2) == "and" ? 3U : 2U;
    }
    const std::size_t link = isHundreds && at(place - 1) == "and" ? 1 : 0;
    if (const int ten = placeIn(tens, at(place)); ten > 0) {
        const auto unit = small(place + 1);
        const bool hasUnit = unit && unit->value < 10;
        return SpokenNumber{
            number.value + 10 * ten + (hasUnit ? unit->value : 0), number.words + link + (hasUnit ? 2 : 1)};
    }
    if (const auto unit = small(place)) {
        return SpokenNumber{number.value + unit->value, number.words + link + 1};
    }
    return isHundreds ? std::optional(number) : std::nullopt;
}

std::optional<SpokenNumber> SpokenWords::ordinal(std::size_t place) const
{
    if (const int value = placeIn(smallOrdinals, at(place)); value > 0) {
        return SpokenNumber{value, 1};
    }
    if (at(place) == "twentieth" || at(place) == "thirtieth") {
        return SpokenNumber{at(place) == "twentieth" ? 20 : 30, 1};
    }
    const int unit = placeIn(smallOrdinals, at(place + 1));
    if (at(place) == "twenty" && unit > 0 && unit < 10) {
        return SpokenNumber{20 + unit, 2};
    }
    return at(place) == "thirty" && unit == 1 ? std::optional(SpokenNumber{31, 2}) : std::nullopt;
}

std::optional<SpokenNumber> SpokenWords::hour(std::size_t place) const
{
    const std::optional<SpokenNumber> spoken = small(place);
    const int value = spoken ? spoken->value : digits(at(place)).value_or(0);
    return value >= 1 && value <= 12 ? std::optional(SpokenNumber{value, 1}) : std::nullopt;
}

std::optional<SpokenNumber> SpokenWords::minute(std::size_t place) const
{
    if (at(place) == "oh" || at(place) == "o" || at(place) == "zero") {
        const auto unit = small(place + 1);
        return unit && unit->value < 10 ? std::optional(SpokenNumber{unit->value, 2}) : std::nullopt;
    }
    const auto number = cardinal(place);
    return number && number->value >= 10 && number->value < 60 ? number : std::nullopt;
}

int SpokenWords::month(std::size_t place) const
{
    return placeIn(months, at(place));
}

std::optional<SpokenWords::HalfOfDay> SpokenWords::halfOfDay(std::size_t place) const
{
    const std::string_view word = at(place);
    if (word == "a.m." || word == "p.m." || word == "a.m" || word == "p.m" || word == "pm") {
        return HalfOfDay{word.front() == 'p', 1};
    }
    if (word == "am" && at(place + 1) != "i") {
        return HalfOfDay{false, 1};
    }
    if ((word == "a" || word == "p") && at(place + 1) == "m") {
        return HalfOfDay{word == "p", 2};
    }
    return std::nullopt;
}

bool SpokenWords::isCounted(std::size_t place) const
{
    const std::string_view word = at(place);
    const bool isPlural = word.size() > 3 && word.ends_with('s') && !word.ends_with("'s") && !word.ends_with("ss")
        && !holds(notPlurals, word) && !holds(timeWords, word);
    return word.starts_with('%') || isPlural || holds(countedWords, word);
}

bool SpokenWords::isWeekday(std::size_t place) const
{
    return holds(weekdays, at(place));
}

bool SpokenWords::isTimeWord(std::size_t place) const
{
    return holds(timeWords, at(place)) || isWeekday(place) || halfOfDay(place)
        || haveAt(place, {"in", "the", "morning"}) || haveAt(place, {"in", "the", "afternoon"})
        || haveAt(place, {"in", "the", "evening"}) || haveAt(place, {"at", "night"})
        || haveAt(place, {"the", "day", "after", "tomorrow"})
        || ((at(place) == "on" || at(place) == "next" || at(place) == "this") && isTimeWord(place + 1));
}

} // namespace quorvell
