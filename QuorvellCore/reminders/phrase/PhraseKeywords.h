// SPDX-License-Identifier: MIT
// Tells which searches of a reminder phrase cannot find anything, so that they are left out.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quorvell {

/// The searches that a word can set off.
enum class PhraseSearch {
    repeat,
    offset,
    namedDay,
    thisPart,
    weekday,
    nextWeek,
    dayAndMonth,
    dayOfMonth,
    clock,
    part,
};

/// Looks over a text once, before any pattern: most phrases can match only two or three of the patterns, and those
/// only from a certain word on. Never rules out a match that the pattern would find.
class PhraseKeywords {
public:
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    explicit PhraseKeywords(std::string_view lowerCasedText);

    /// No match of that search begins before this byte; `nowhere` when there is none at all.
    std::size_t start(PhraseSearch search) const { return m_starts[static_cast<std::size_t>(search)]; }

private:
    static constexpr std::size_t rememberedWords = 4;

    void lookAt(std::string_view word);
    void allow(PhraseSearch search, std::size_t wordsBefore);

    std::array<std::size_t, 10> m_starts{};
    std::array<std::size_t, rememberedWords + 1> m_wordStarts{}; ///< The current word's and those before it.
};

} // namespace quorvell
