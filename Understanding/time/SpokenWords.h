// SPDX-License-Identifier: MIT
// A text as words that readers of spoken times can look at: lower case, hyphens opened, punctuation set apart.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A number and how many words it takes.
struct SpokenNumber {
    int value = 0;
    std::size_t words = 0;
};

/// Words of a text in order. A place beyond the end is an empty word.
class SpokenWords {
public:
    explicit SpokenWords(std::string_view text);

    std::size_t size() const { return m_words.size(); }
    /// Lower case, without punctuation around it.
    std::string_view at(std::size_t place) const;
    /// As it stood in the text, the space before it included.
    std::string_view original(std::size_t place) const;
    std::string_view spaceBefore(std::size_t place) const;
    /// Punctuation after the word.
    std::string_view after(std::size_t place) const;
    /// Whether nothing but spaces (or a hyphen) stands between the words from `first` to `end`, so that they can be
    /// read as one expression.
    bool areJoined(std::size_t first, std::size_t end) const;
    /// Whether these words follow, e.g. {"in", "the", "morning"}.
    bool haveAt(std::size_t place, std::initializer_list<std::string_view> words) const;

    /// One to nineteen, in words.
    std::optional<SpokenNumber> small(std::size_t place) const;
    /// "five", "twenty", "twenty five", "a hundred and twenty": 1 to 999, in words.
    std::optional<SpokenNumber> cardinal(std::size_t place) const;
    /// "fifth", "twenty first": 1 to 31, in words.
    std::optional<SpokenNumber> ordinal(std::size_t place) const;
    /// An hour of a twelve hour clock, in words or digits.
    std::optional<SpokenNumber> hour(std::size_t place) const;
    /// Minutes as they follow an hour: "thirty", "oh five", "forty two"; 1 to 59, in words.
    std::optional<SpokenNumber> minute(std::size_t place) const;
    /// 1 for January, in full; 0 when the word is none.
    int month(std::size_t place) const;
    /// "p.m.", "pm", "p m": true for the afternoon.
    struct HalfOfDay {
        bool isAfternoon = false;
        std::size_t words = 0;
    };
    std::optional<HalfOfDay> halfOfDay(std::size_t place) const;

    /// "guys", "of", "percent": what stands there is counted by the number before it.
    bool isCounted(std::size_t place) const;
    /// A day, a part of it, or another word that times stand beside.
    bool isTimeWord(std::size_t place) const;
    bool isWeekday(std::size_t place) const;

private:
    struct Word {
        std::string lower;
        std::size_t start = 0; ///< Of the space before it.
        std::size_t wordStart = 0;
        std::size_t coreEnd = 0;
        std::size_t end = 0;
    };

    void append(std::size_t start, std::size_t wordStart, std::size_t end);

    std::string m_text;
    std::vector<Word> m_words;
};

} // namespace quorvell
