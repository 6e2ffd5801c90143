// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseKeywords.h"

#include <algorithm>

namespace quorvell {

namespace {

/// A word that begins with `letters` can belong to a match of `search` that begins up to `wordsBefore` words earlier
/// ("on the 5th of march": four).
struct Keyword {
    std::string_view letters;
    PhraseSearch search;
    std::size_t wordsBefore;
};

constexpr Keyword keywords[] = {
    {"afternoon", PhraseSearch::part, 2},
    {"apr", PhraseSearch::dayAndMonth, 4},
    {"aug", PhraseSearch::dayAndMonth, 4},
    {"daily", PhraseSearch::repeat, 0},
    {"day", PhraseSearch::namedDay, 0},
    {"dec", PhraseSearch::dayAndMonth, 4},
    {"each", PhraseSearch::repeat, 0},
    {"evening", PhraseSearch::part, 2},
    {"every", PhraseSearch::repeat, 0},
    {"feb", PhraseSearch::dayAndMonth, 4},
    {"fri", PhraseSearch::weekday, 2},
    {"in", PhraseSearch::offset, 0},
    {"jan", PhraseSearch::dayAndMonth, 4},
    {"jul", PhraseSearch::dayAndMonth, 4},
    {"jun", PhraseSearch::dayAndMonth, 4},
    {"mar", PhraseSearch::dayAndMonth, 4},
    {"may", PhraseSearch::dayAndMonth, 4},
    {"midday", PhraseSearch::clock, 1},
    {"midnight", PhraseSearch::clock, 1},
    {"mon", PhraseSearch::weekday, 2},
    {"monthly", PhraseSearch::repeat, 0},
    {"morning", PhraseSearch::part, 2},
    {"next", PhraseSearch::nextWeek, 0},
    {"night", PhraseSearch::part, 2},
    {"noon", PhraseSearch::clock, 1},
    {"nov", PhraseSearch::dayAndMonth, 4},
    {"oct", PhraseSearch::dayAndMonth, 4},
    {"sat", PhraseSearch::weekday, 2},
    {"sep", PhraseSearch::dayAndMonth, 4},
    {"sun", PhraseSearch::weekday, 2},
    {"the", PhraseSearch::dayOfMonth, 1},
    {"this", PhraseSearch::thisPart, 0},
    {"thu", PhraseSearch::weekday, 2},
    {"tmrw", PhraseSearch::namedDay, 0},
    {"today", PhraseSearch::namedDay, 0},
    {"tomorrow", PhraseSearch::namedDay, 0},
    {"tonight", PhraseSearch::namedDay, 0},
    {"tue", PhraseSearch::weekday, 2},
    {"wed", PhraseSearch::weekday, 2},
    {"weekdays", PhraseSearch::repeat, 0},
    {"weekly", PhraseSearch::repeat, 0},
    {"yearly", PhraseSearch::repeat, 0},
};

/// Where the keywords of each letter begin in the table, which is sorted.
constexpr auto firstByLetter = [] {
    std::array<std::size_t, 27> first{};
    for (std::size_t letter = 0; letter < first.size(); ++letter) {
        while (first[letter] < std::size(keywords)
            && keywords[first[letter]].letters.front() < static_cast<char>('a' + letter))
            ++first[letter];
    }
    return first;
}();

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// ASCII only. Between two of these there is never a word's border, so a keyword begins only behind something else.
bool isWordLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || isDigit(letter) || letter == '_';
}

bool isAscii(char letter)
{
    return static_cast<unsigned char>(letter) < 0x80;
}

} // namespace

PhraseKeywords::PhraseKeywords(std::string_view text)
{
    m_starts.fill(nowhere);
    bool hasDigit = false;
    for (std::size_t index = 0; index < text.size();) {
        if (!isWordLetter(text[index])) {
            if (!isAscii(text[index])) {
                // It may be a digit of another script.
                hasDigit = true;
                m_starts[static_cast<std::size_t>(PhraseSearch::clock)] = 0;
            }
            ++index;
            continue;
        }
        std::copy_backward(m_wordStarts.begin(), m_wordStarts.end() - 1, m_wordStarts.end());
        m_wordStarts.front() = index;
        bool wordHasDigit = false;
        for (; index < text.size() && isWordLetter(text[index]); ++index)
            wordHasDigit = wordHasDigit || isDigit(text[index]);
        if (wordHasDigit)
            allow(PhraseSearch::clock, 1);
        hasDigit = hasDigit || wordHasDigit;
        lookAt(text.substr(m_wordStarts.front(), index - m_wordStarts.front()));
    }
    if (!hasDigit) {
        m_starts[static_cast<std::size_t>(PhraseSearch::dayAndMonth)] = nowhere;
        m_starts[static_cast<std::size_t>(PhraseSearch::dayOfMonth)] = nowhere;
    }
}

void PhraseKeywords::lookAt(std::string_view word)
{
    if (word.front() < 'a' || word.front() > 'z')
        return;
    const auto letter = static_cast<std::size_t>(word.front() - 'a');
    for (std::size_t index = firstByLetter[letter]; index < firstByLetter[letter + 1]; ++index) {
        if (word.starts_with(keywords[index].letters))
            allow(keywords[index].search, keywords[index].wordsBefore);
    }
}

void PhraseKeywords::allow(PhraseSearch search, std::size_t wordsBefore)
{
    std::size_t& start = m_starts[static_cast<std::size_t>(search)];
    start = std::min(start, m_wordStarts[wordsBefore]);
}

} // namespace quorvell
