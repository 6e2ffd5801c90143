// SPDX-License-Identifier: MIT
// A table of words, compiled once, and looked for in one pass over a text however many they are.
//
// The words stand in a tree, letter by letter. It is entered wherever a word of the text may begin and left at the
// first letter that leads nowhere, so each place costs at most the longest word of the table. Endings are tried only
// where a word has been found.
#pragma once

#include "QuorvellCore/safety/words/JudgedText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Immutable; any thread.
class WordMatcher {
public:
    /// What a whole word may not be next to.
    enum class Bounds {
        letters, ///< Of any alphabet; digits, underscores and apostrophes are bounds.
        lettersAndDigits,
        none, ///< Also part of a longer one, for languages that part their words by nothing.
    };

    /// Words in lower case; one space in them stands for any run of white space. A word counts with any of the endings,
    /// of which "" is one only where it is listed.
    WordMatcher(std::span<const std::string_view> words, std::span<const std::string_view> endings,
        Bounds bounds = Bounds::letters);

    /// The place in the table of the first of its words (in the table's order) that is in the text, in any of its
    /// forms.
    std::optional<std::size_t> firstIn(const JudgedText& text) const;
    bool isIn(const JudgedText& text) const { return firstIn(text).has_value(); }
    /// As it is written only: for words that allow something, and for texts that were heard.
    std::optional<std::size_t> firstInWritten(std::string_view lower) const;

private:
    static constexpr std::size_t none = SIZE_MAX;

    struct Node {
        char letter = 0;
        std::uint32_t child = 0; ///< The first letter that may follow; 0 for none.
        std::uint32_t sibling = 0; ///< Another letter in its place.
        std::size_t word = none; ///< That ends here.
    };

    /// The table in one spelling.
    struct Tree {
        std::vector<Node> nodes{1};
        std::array<std::uint32_t, 256> first{}; ///< By the first letter, which most places do not have.
        std::vector<std::string> endings;
        bool hasLooseMarks = false; ///< Accents may stand beside their letters, whose word goes on behind them.

        void add(std::string_view word, std::size_t index);
        std::uint32_t after(std::uint32_t node, char letter) const;
    };

    std::size_t search(const Tree& tree, std::string_view text) const;
    std::size_t searchFrom(const Tree& tree, std::string_view text, std::size_t start, std::size_t best) const;
    bool endsAt(const Tree& tree, std::string_view text, std::size_t position) const;
    bool isWithinWord(const Tree& tree, char32_t point) const;

    Bounds m_bounds;
    Tree m_written;
    Tree m_looks;
};

} // namespace quorvell
