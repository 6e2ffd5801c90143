// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/TimeTerms.h"

#include "QuorvellCore/reminders/PhraseWords.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;

template <typename Table> bool holds(const Table& table, std::string_view word)
{
    return std::ranges::find(table, word) != table.end();
}

/// Letters changed, left out, added, or swapped with their neighbour, until one word is the other.
std::size_t slipsBetween(std::string_view left, std::string_view right)
{
    std::vector<std::size_t> before(right.size() + 1);
    std::vector<std::size_t> above(right.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t row = 1; row <= left.size(); ++row) {
        std::vector<std::size_t> current(right.size() + 1, row);
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const bool isSame = left[row - 1] == right[column - 1];
            current[column] =
                std::min({above[column] + 1, current[column - 1] + 1, above[column - 1] + (isSame ? 0 : 1)});
            const bool isSwapped =
                row > 1 && column > 1 && left[row - 1] == right[column - 2] && left[row - 2] == right[column - 1];
            if (isSwapped)
                current[column] = std::min(current[column], before[column - 2] + 1);
        }
        before = std::exchange(above, std::move(current));
    }
    return above.back();
}

/// Longer words are spared the comparison: they are no slip of a name.
bool isAlmost(std::string_view word, std::string_view name, std::size_t mostSlips)
{
    return word.size() + mostSlips >= name.size() && word.size() <= name.size() + mostSlips
        && slipsBetween(word, name) <= mostSlips;
}

} // namespace

std::optional<int> TimeTerms::weekday(std::string_view word)
{
    const bool isName = holds(PhraseWords::weekdays, word) || holds(PhraseWords::shortWeekdays, word);
    return isName ? PhraseWords::weekday(word) : std::nullopt;
}

bool TimeTerms::isPluralWeekday(std::string_view word)
{
    return word.ends_with("days") && holds(PhraseWords::weekdays, word.substr(0, word.size() - 1));
}

bool TimeTerms::isWordToo(std::string_view word)
{
    return word == "sun" || word == "mon" || word == "wed" || word == "sat";
}

std::optional<int> TimeTerms::month(std::string_view word)
{
    constexpr std::size_t longName = 6; // Shorter ones are a slip away from other words: "marsh", "jute".
    const auto month = PhraseWords::month(word);
    if (!month)
        return std::nullopt;
    const std::string_view name = PhraseWords::months[static_cast<std::size_t>(*month - 1)];
    const bool isName = word == name || word == name.substr(0, 3) || word == "sept";
    const std::size_t mostSlips = name.size() > longName ? 2 : 1;
    return isName || (name.size() >= longName && isAlmost(word, name, mostSlips)) ? month : std::nullopt;
}

bool TimeTerms::isAlmostDay(std::string_view word)
{
    constexpr std::array<std::string_view, 10> words = {
        "sundae", "sundaes", "sunny", "sundry", "mondeo", "midday", "holiday", "birthday", "someday", "fridays"};
    constexpr std::size_t shortest = 5;
    if (word.size() < shortest || word.size() > 10 || holds(words, word) || isRelativeDay(word) || isPluralWeekday(word)
        || weekday(word))
        return false;
    const auto isSlip = [word](std::string_view name) {
        return word.front() == name.front() && isAlmost(word, name, name.size() > 7 ? 2 : 1);
    };
    constexpr std::array<std::string_view, 3> relative = {"tomorrow", "tonight", "today"};
    return word == "2morrow" || word == "tomoz" || word == "wensday" || word == "wendsday"
        || std::ranges::any_of(PhraseWords::weekdays, isSlip) || std::ranges::any_of(relative, isSlip);
}

bool TimeTerms::isRelativeDay(std::string_view word)
{
    return word == "today" || word == "tonight" || word == "tomorrow" || word == "tmrw";
}

bool TimeTerms::isPart(std::string_view word)
{
    return PhraseWords::part(word).has_value();
}

bool TimeTerms::isUnit(std::string_view word)
{
    constexpr std::array<std::string_view, 20> units = {"minute", "minutes", "min", "mins", "hour", "hours", "hr",
        "hrs", "day", "days", "week", "weeks", "weekend", "weekends", "month", "months", "year", "years", "fortnight",
        "fortnights"};
    return holds(units, word);
}

std::optional<int> TimeTerms::number(std::string_view word)
{
    constexpr std::array<std::string_view, 20> names = {"", "one", "two", "three", "four", "five", "six", "seven",
        "eight", "nine", "ten", "eleven", "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen",
        "eighteen", "nineteen"};
    constexpr std::array<std::string_view, 10> tens = {
        "", "", "twenty", "thirty", "forty", "fifty", "sixty", "seventy", "eighty", "ninety"};
    if (word.empty())
        return std::nullopt;
    if (word == "a" || word == "an")
        return 1;
    if (const auto name = std::ranges::find(names, word); name != names.end())
        return static_cast<int>(name - names.begin());
    const auto ten = std::ranges::find(tens, word);
    return ten != tens.end() ? std::optional(static_cast<int>(ten - tens.begin()) * 10) : std::nullopt;
}

std::optional<int> TimeTerms::ordinal(std::string_view word)
{
    constexpr std::array<std::string_view, 20> names = {"", "first", "second", "third", "fourth", "fifth", "sixth",
        "seventh", "eighth", "ninth", "tenth", "eleventh", "twelfth", "thirteenth", "fourteenth", "fifteenth",
        "sixteenth", "seventeenth", "eighteenth", "nineteenth"};
    if (word == "twentieth" || word == "thirtieth")
        return word == "twentieth" ? 20 : 30;
    const auto name = word.empty() ? names.end() : std::ranges::find(names, word);
    return name != names.end() ? std::optional(static_cast<int>(name - names.begin())) : std::nullopt;
}

int TimeTerms::clockLength(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    if (tokens.is(index, {"noon", "midday", "midnight"}))
        return 1;
    const bool isMarked = tokens.is(index + 1, {"am", "pm", "a.m", "p.m", "a.m.", "p.m."});
    const bool isShortNumber = token.kind == Kind::number && token.text.size() <= 2;
    if ((token.kind == Kind::clock || isShortNumber) && isMarked)
        return 2;
    return token.kind == Kind::clock ? 1 : 0;
}

bool TimeTerms::isTimeLike(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    return token.kind == Kind::number || token.kind == Kind::ordinal || clockLength(tokens, index) > 0
        || (weekday(token.text) && !isWordToo(token.text)) || month(token.text) || isRelativeDay(token.text)
        || isPart(token.text) || tokens.is(index, {"at", "am", "pm", "@", "a.m.", "p.m.", "every", "each", "next"});
}

bool TimeTerms::isOrdinary(const RequestTokens& tokens, int index)
{
    const bool isLink = tokens.is(index,
        {"a", "an", "the", "and", "or", "but", "on", "at", "by", "in", "to", "for", "from", "with", "about", "of",
            "until", "till", "before", "after", "if", "when", "while", "because", "so", "that", "this", "my", "our",
            "your", "his", "her", "their", "me", "i", "please", "is", "then", "every", "each", "next", "as", "around",
            "sharp", "daily", "weekly", "monthly", "yearly", "weekdays", "via", "since", "not", "coming", "week"});
    return tokens.token(index).kind == Kind::word && !isLink && !isTimeLike(tokens, index);
}

bool TimeTerms::governsDay(const RequestTokens& tokens, int index)
{
    return tokens.is(index, {"on", "next", "this", "coming", "by", "every", "each", "until", "till", "from", "before"});
}

bool TimeTerms::isDeterminer(const RequestTokens& tokens, int index)
{
    return tokens.is(index, {"the", "my", "our", "your", "his", "her", "their", "a", "an"});
}

} // namespace quorvell
