// SPDX-License-Identifier: MIT
// What a single word can have to do with time.
#pragma once

#include <cstdint>
#include <optional>

namespace quorvell {

/// Several terms can hold of one word: "second" is a number in a row, "next" leads to a day and to a week.
class WordTerms {
public:
    enum Term : std::uint32_t {
        weekday = 1U << 0U, ///< By the whole name or a short form.
        month = 1U << 1U, ///< The name, a short form, or a long name with a slip in it. Never "marshmallows".
        number = 1U << 2U, ///< "five", "twenty", and "a".
        ordinal = 1U << 3U, ///< "first" to "thirtieth", without those of two words.
        wordToo = 1U << 4U, ///< "sun", "mon", "wed" and "sat" are words of their own, too.
        pluralWeekday = 1U << 5U,
        relativeDay = 1U << 6U,
        almostDay = 1U << 7U, ///< "tomorow", "wensday", "thrusday": a slip or two away from the name of a day.
        part = 1U << 8U, ///< Of the day.
        unit = 1U << 9U, ///< "hours", "week", "month"; not "second", which is mostly something else.
        noon = 1U << 10U, ///< A time of day that is one word: "noon", "midnight".
        marker = 1U << 11U, ///< "am", "p.m."
        besideTime = 1U << 12U, ///< Stands beside a time without being part of it: "at", "every".
        link = 1U << 13U, ///< No word of its own: a preposition, an article, a pronoun.
        governsDay = 1U << 14U, ///< "on", "by", "next": makes a day of the word behind it.
        determiner = 1U << 15U,
        beginsLikeMonth = 1U << 16U, ///< "marshmallows", "decide": and is none.
        // Where one of the readers of a request has to look. A word without its term is passed by unread.
        notTime = 1U << 17U,
        saidDate = 1U << 18U,
        spokenDate = 1U << 19U,
        passedOver = 1U << 20U,
        shortName = 1U << 21U, ///< "2moro", "weds": written out before anything reads a time.
        everyReader = notTime | saidDate | spokenDate | passedOver,
    };

    constexpr WordTerms() = default;
    constexpr WordTerms(std::uint32_t terms, int value)
        : m_terms(terms)
        , m_value(static_cast<std::uint8_t>(value))
    {
    }

    constexpr bool has(std::uint32_t anyOf) const { return (m_terms & anyOf) != 0; }
    /// The same with those terms, too.
    constexpr WordTerms with(std::uint32_t terms) const { return {m_terms | terms, m_value}; }
    /// Of a term with a value, in its range: weekday 1 = Sunday to 7, month 1 to 12, number 1 to 90, ordinal 1 to 30.
    std::optional<int> valueOf(Term term) const { return has(term) ? std::optional<int>(m_value) : std::nullopt; }

private:
    std::uint32_t m_terms = 0;
    std::uint8_t m_value = 0; ///< No word has two of the terms with a value.
};

} // namespace quorvell
