// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/WordSlips.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestName = 9; ///< Letters of "wednesday" and "september".

std::size_t slipsBetween(std::string_view word, std::string_view name)
{
    using Line = std::array<std::size_t, longestName + 1>;
    std::array<Line, 3> lines{};
    for (std::size_t column = 0; column <= name.size(); ++column)
        lines[0][column] = column;
    for (std::size_t row = 1; row <= word.size(); ++row) {
        const Line& above = lines[(row - 1) % 3];
        const Line& before = lines[(row + 1) % 3]; // Two rows up.
        Line& current = lines[row % 3];
        current[0] = row;
        for (std::size_t column = 1; column <= name.size(); ++column) {
            const bool isSame = word[row - 1] == name[column - 1];
            current[column] =
                std::min({above[column] + 1, current[column - 1] + 1, above[column - 1] + (isSame ? 0 : 1)});
            const bool isSwapped =
                row > 1 && column > 1 && word[row - 1] == name[column - 2] && word[row - 2] == name[column - 1];
            if (isSwapped)
                current[column] = std::min(current[column], before[column - 2] + 1);
        }
    }
    return lines[word.size() % 3][name.size()];
}

using Pair = std::pair<std::string_view, std::string_view>;

/// Further from their names than slips are counted, or too short for it.
constexpr auto slipsOfDays =
    std::to_array<Pair>({{"tomoz", "tomorrow"}, {"wendsday", "wednesday"}, {"wensday", "wednesday"},
        {"wenesday", "wednesday"}, {"wedensday", "wednesday"}, {"wednsday", "wednesday"}, {"weds", "wednesday"},
        {"thrusday", "thursday"}, {"tommorrow", "tomorrow"}, {"tommorow", "tomorrow"}, {"tomorow", "tomorrow"}});
constexpr auto slipsOfMonths =
    std::to_array<Pair>({{"apirl", "april"}, {"arpil", "april"}, {"aprl", "april"}, {"jully", "july"}, {"juli", "july"},
        {"juny", "june"}, {"agust", "august"}, {"ogust", "august"}, {"marhc", "march"}, {"mrach", "march"}});
constexpr auto partsOfDay = std::to_array<std::string_view>({"morning", "afternoon", "evening"});
constexpr auto unitsOfTime = std::to_array<std::string_view>({"minutes", "minute", "hours"});
/// Words of their own that are as near to a word of time as a slip.
constexpr auto otherWords = std::to_array<std::string_view>(
    {"sundae", "sundaes", "sunny", "sundry", "mondeo", "midday", "holiday", "birthday", "someday", "toddy", "frida",
        "sunda", "mourning", "moaning", "mornings", "evenings", "afternoons", "evenings", "weekday", "weekdays"});

std::string_view listed(std::span<const Pair> rows, std::string_view word)
{
    const auto row = std::ranges::find(rows, word, &Pair::first);
    return row != rows.end() ? row->second : std::string_view();
}

bool isOther(std::string_view word)
{
    return std::ranges::find(otherWords, word) != otherWords.end();
}

/// The first letter is hardly ever the wrong one.
std::string_view near(std::span<const std::string_view> names, std::string_view word, std::size_t longestWithOneSlip)
{
    constexpr std::size_t shortest = 5;
    constexpr std::size_t longest = 11;
    if (word.size() < shortest || word.size() > longest || isOther(word))
        return {};
    const auto row = std::ranges::find_if(names, [&](std::string_view name) {
        return word.front() == name.front() && isWordAlmost(word, name, name.size() > longestWithOneSlip ? 2 : 1);
    });
    return row != names.end() ? *row : std::string_view();
}

} // namespace

/// Longer words are spared the comparison: they are no slip of a name.
bool isWordAlmost(std::string_view word, std::string_view name, std::size_t mostSlips)
{
    return word.size() + mostSlips >= name.size() && word.size() <= name.size() + mostSlips
        && slipsBetween(word, name) <= mostSlips;
}

std::string_view WordSlips::day(std::string_view word)
{
    constexpr std::array<std::string_view, 3> relative = {"tomorrow", "tonight", "today"};
    constexpr std::size_t longestWithOneSlip = 7;
    if (const std::string_view name = listed(slipsOfDays, word); !name.empty())
        return name;
    const std::string_view weekday = near(PhraseWords::weekdays, word, longestWithOneSlip);
    return !weekday.empty() ? weekday : near(relative, word, longestWithOneSlip);
}

std::string_view WordSlips::month(std::string_view word)
{
    constexpr std::size_t shortestName = 6; // Shorter ones are a slip away from other words: "marsh", "jute".
    constexpr std::size_t longestWithOneSlip = 7;
    if (const std::string_view name = listed(slipsOfMonths, word); !name.empty())
        return name;
    const std::string_view name = near(PhraseWords::months, word, longestWithOneSlip);
    return name.size() >= shortestName ? name : std::string_view();
}

std::string_view WordSlips::part(std::string_view word)
{
    constexpr std::size_t longestWithOneSlip = 8;
    return near(partsOfDay, word, longestWithOneSlip);
}

std::string_view WordSlips::unit(std::string_view word)
{
    constexpr std::size_t longestWithOneSlip = 7;
    return near(unitsOfTime, word, longestWithOneSlip);
}

} // namespace quorvell
