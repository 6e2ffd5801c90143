// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/RequestVocabulary.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/wording/WordTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace quorvell {

namespace {

using Terms = WordTerms;

/// Where the readers have to look because of what the word is.
std::uint32_t readersOf(WordTerms terms)
{
    const auto ifAny = [terms](std::uint32_t any, std::uint32_t readers) { return terms.has(any) ? readers : 0U; };
    return ifAny(Terms::beginsLikeMonth | Terms::part, Terms::notTime)
        | ifAny(Terms::weekday | Terms::month, Terms::notTime | Terms::saidDate | Terms::passedOver)
        | ifAny(Terms::relativeDay, Terms::saidDate | Terms::passedOver)
        | ifAny(Terms::number | Terms::ordinal | Terms::pluralWeekday, Terms::spokenDate | Terms::passedOver)
        | ifAny(Terms::unit | Terms::noon | Terms::almostDay, Terms::passedOver);
}

constexpr std::size_t longestName = 9; ///< Letters of "wednesday" and "september".

/// Letters changed, left out, added, or swapped with their neighbour, until one word is the other.
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

/// Longer words are spared the comparison: they are no slip of a name.
bool isAlmost(std::string_view word, std::string_view name, std::size_t mostSlips)
{
    return word.size() + mostSlips >= name.size() && word.size() <= name.size() + mostSlips
        && slipsBetween(word, name) <= mostSlips;
}

/// A month's name with a slip behind its first three letters.
std::optional<int> almostMonth(std::string_view word)
{
    constexpr std::size_t shortestName = 6; // Shorter ones are a slip away from other words: "marsh", "jute".
    const auto found = PhraseWords::month(word);
    if (!found)
        return std::nullopt;
    const std::string_view name = PhraseWords::months[static_cast<std::size_t>(*found - 1)];
    const bool isName = name.size() >= shortestName && isAlmost(word, name, name.size() > shortestName ? 2 : 1);
    return isName ? found : std::nullopt;
}

bool isAlmostDay(std::string_view word)
{
    constexpr std::array<std::string_view, 9> others = {
        "sundae", "sundaes", "sunny", "sundry", "mondeo", "midday", "holiday", "birthday", "someday"};
    constexpr std::size_t shortest = 5;
    constexpr std::size_t longest = 10;
    if (word.size() < shortest || word.size() > longest || std::ranges::find(others, word) != others.end())
        return false;
    const auto isSlip = [word](std::string_view name) {
        return word.front() == name.front() && isAlmost(word, name, name.size() > 7 ? 2 : 1);
    };
    constexpr std::array<std::string_view, 3> relative = {"tomorrow", "tonight", "today"};
    return std::ranges::any_of(PhraseWords::weekdays, isSlip) || std::ranges::any_of(relative, isSlip);
}

/// Of a word that no row tells of.
WordTerms termsBySound(std::string_view word)
{
    if (const auto found = almostMonth(word))
        return {Terms::month, *found};
    const std::uint32_t like = PhraseWords::month(word) ? Terms::beginsLikeMonth : 0U;
    return {like | (isAlmostDay(word) ? Terms::almostDay : 0U), 0};
}

/// Plain ASCII words that begin with a letter; the readers look at all others.
bool isPlain(std::string_view word)
{
    const auto isLetter = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
    };
    return word.front() >= 'a' && std::ranges::all_of(word, isLetter);
}

/// "5 amazing": what stands behind a figure may look like its marker.
bool beginsLikeMarker(std::string_view word)
{
    return word.size() > 2 && (word.starts_with("am") || word.starts_with("pm"));
}

} // namespace

WordTerms RequestVocabulary::termsOf(std::string_view word)
{
    if (word.empty())
        return {};
    const auto listed = WordTable::find(word);
    const WordTerms terms = listed ? *listed : termsBySound(word);
    if (!isPlain(word))
        return terms.with(Terms::everyReader);
    return terms.with(readersOf(terms) | (beginsLikeMarker(word) ? Terms::notTime : 0U));
}

WordTerms RequestVocabulary::termsOfMark(std::string_view mark)
{
    return WordTable::find(mark).value_or(WordTerms());
}

} // namespace quorvell
