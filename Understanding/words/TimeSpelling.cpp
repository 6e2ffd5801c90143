// SPDX-License-Identifier: MIT
#include "Understanding/words/TimeSpelling.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/WordDistance.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quorvell {

namespace {

constexpr std::size_t shortestSlip = 5; ///< Letters; shorter words are too near to others.
constexpr std::size_t longName = 8; ///< Letters of a name from which on two slips are believed.

constexpr auto names = std::to_array<std::string_view>({"monday", "tuesday", "wednesday", "thursday", "friday",
    "saturday", "sunday", "january", "february", "september", "october", "november", "december", "august", "tomorrow",
    "tonight", "yesterday", "weekend", "weekday", "morning", "afternoon", "evening", "midnight", "minutes", "minute",
    "o'clock", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen", "twenty", "thirty"});

struct Slip {
    std::string_view typed;
    std::string_view right;
};

/// Further off than slips are counted, or too short for it. None is a word of its own.
constexpr auto slips = std::to_array<Slip>({{"wensday", "wednesday"}, {"wendsday", "wednesday"},
    {"wenesday", "wednesday"}, {"wedensday", "wednesday"}, {"wednsday", "wednesday"}, {"tusday", "tuesday"},
    {"thurday", "thursday"}, {"thrusday", "thursday"}, {"thursdy", "thursday"}, {"thusday", "thursday"},
    {"apirl", "april"}, {"arpil", "april"}, {"aprl", "april"}, {"agust", "august"}, {"ogust", "august"},
    {"marhc", "march"}, {"mrach", "march"}, {"jully", "july"}, {"fourty", "forty"}, {"fourtyfive", "forty five"},
    {"fivety", "fifty"}, {"fourthy", "forty"}, {"fivteen", "fifteen"}, {"forteen", "fourteen"}, {"eigth", "eighth"},
    {"eigt", "eight"}, {"sevn", "seven"}, {"elven", "eleven"}, {"eleve", "eleven"}, {"twelv", "twelve"},
    {"twelth", "twelfth"}, {"quater", "quarter"}, {"quartr", "quarter"}, {"qaurter", "quarter"}, {"evry", "every"},
    {"evrey", "every"}, {"everday", "everyday"}, {"nihgt", "night"}, {"nite", "night"}, {"mornin", "morning"},
    {"hous", "hours"}, {"horus", "hours"}, {"huor", "hour"}, {"weeek", "week"}, {"wek", "week"}, {"mounth", "month"},
    {"monht", "month"}, {"dayly", "daily"}, {"weekley", "weekly"}, {"noone", "noon"}});

/// Words of their own, as near to a word of time as a slip.
constexpr auto others = std::to_array<std::string_view>({"sundae", "sundaes", "sundry", "mondeo", "mourning", "moaning",
    "mooning", "augusta", "augusto", "minuet", "minuets", "minuted", "minuses", "yesterdays", "thirsty", "twenties",
    "thirties", "evenings", "mornings", "afternoons", "weekends", "weekdays", "weakened", "remember", "remembers",
    "dismember", "decembers", "tonights", "afternoons", "midnights", "fridays", "mondays", "sundays", "saturdays",
    "thursdays", "tuesdays", "wednesdays", "thirteenth", "fourteenth", "fifteenth", "sixteenth", "seventeenth",
    "eighteenth", "nineteenth", "twentieth", "thirtieth", "tomorrows", "mounting", "warning", "fifteens", "weekdone",
    "weekender", "tomorrow's", "minutely", "minutest", "tuesdays'", "thirteens", "sunda", "seventeens", "octobers"});

std::string_view meantTime(std::string_view word)
{
    const auto slip = std::ranges::find(slips, word, &Slip::typed);
    if (slip != slips.end())
        return slip->right;
    const bool isKnown =
        std::ranges::find(names, word) != names.end() || std::ranges::find(others, word) != others.end();
    if (word.size() < shortestSlip || isKnown)
        return {};
    const auto name = std::ranges::find_if(names, [&](std::string_view right) {
        const std::size_t most = right.size() >= longName ? 2 : 1;
        return right.front() == word.front() && WordDistance::between(word, right) <= most;
    });
    return name != names.end() ? *name : std::string_view();
}

/// "Wensdays" as "wensday".
std::string meantOf(std::string_view word)
{
    const std::string_view right = meantTime(word);
    if (!right.empty() || !word.ends_with('s'))
        return std::string(right);
    const std::string_view single = meantTime(word.substr(0, word.size() - 1));
    const bool isKnown = std::ranges::find(others, word) != others.end();
    return single.ends_with("day") && !isKnown ? std::string(single) + "s" : std::string();
}

} // namespace

std::string TimeSpelling::repaired(std::string_view words)
{
    static const Pattern word("\"[^\"]*\"|(?<![\\p{L}\\d])[\\p{L}]{3,12}(?![\\p{L}\\d])");
    std::string text;
    std::size_t position = 0;
    for (const PatternMatch& match : word.findAll(words)) {
        const std::string typed = lowerCased(words.substr(match.range.start, match.range.end - match.range.start));
        const std::string right = typed.front() != '"' ? meantOf(typed) : std::string();
        if (right.empty())
            continue;
        text += std::string(words.substr(position, match.range.start - position)) + right;
        position = match.range.end;
    }
    return text + std::string(words.substr(position));
}

} // namespace quorvell
