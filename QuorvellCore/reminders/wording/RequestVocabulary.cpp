// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/RequestVocabulary.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/wording/WordSlips.h"
#include "QuorvellCore/reminders/wording/WordTable.h"

#include <algorithm>
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

/// A month's name with a slip behind its first three letters.
std::optional<int> almostMonth(std::string_view word)
{
    constexpr std::size_t shortestName = 6; // Shorter ones are a slip away from other words: "marsh", "jute".
    const auto found = PhraseWords::month(word);
    if (!found)
        return std::nullopt;
    const std::string_view name = PhraseWords::months[static_cast<std::size_t>(*found - 1)];
    const bool isName = name.size() >= shortestName && isWordAlmost(word, name, name.size() > shortestName ? 2 : 1);
    return isName ? found : std::nullopt;
}

/// Of a word that no row tells of.
WordTerms termsBySound(std::string_view word)
{
    if (const auto found = almostMonth(word))
        return {Terms::month, *found};
    const std::uint32_t like = PhraseWords::month(word) ? Terms::beginsLikeMonth : 0U;
    return {like | (!WordSlips::day(word).empty() ? Terms::almostDay : 0U), 0};
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
