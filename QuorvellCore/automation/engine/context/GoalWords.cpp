// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/GoalWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/OneLine.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view sentenceEnds[] = {".", ",", "!", "?", "…"};
constexpr std::string_view openingQuotes[] = {"\"", "'", "“", "‘", "„"};
constexpr std::string_view closingMarks[] = {".", ",", "!", "?", "…", "\"", "'", "”", "’", "“"};

std::string_view withoutSentenceEnd(std::string_view word)
{
    for (bool isCut = true; isCut;) {
        isCut = false;
        for (const std::string_view mark : sentenceEnds) {
            if (word.ends_with(mark)) {
                word.remove_suffix(mark.size());
                isCut = true;
            }
        }
    }
    return word;
}

bool beginsWord(std::string_view before)
{
    const auto isLast = [&](std::string_view mark) { return before.ends_with(mark); };
    return before.empty() || before.ends_with(' ')
        || std::any_of(std::begin(openingQuotes), std::end(openingQuotes), isLast);
}

bool endsWord(std::string_view behind)
{
    for (bool isCut = true; isCut;) {
        isCut = false;
        for (const std::string_view mark : closingMarks) {
            if (behind.starts_with(mark)) {
                behind.remove_prefix(mark.size());
                isCut = true;
            }
        }
    }
    return behind.empty() || behind.starts_with(' ');
}

} // namespace

std::string GoalWords::of(std::string_view goal)
{
    const std::string line = lowerCased(onOneLine(goal));
    std::string words;
    for (std::size_t start = 0; start < line.size();) {
        const std::size_t end = std::min(line.find(' ', start), line.size());
        const std::string_view word = withoutSentenceEnd(std::string_view(line).substr(start, end - start));
        if (!word.empty())
            (words += words.empty() ? "" : " ") += word;
        start = end + 1;
    }
    return words;
}

bool GoalWords::names(std::string_view goal, std::string_view text)
{
    if (text.empty() || trimmed(text) != text)
        return false;
    const std::string line = onOneLine(goal);
    const std::string_view whole = line;
    for (std::size_t at = whole.find(text); at != std::string_view::npos; at = whole.find(text, at + 1)) {
        if (beginsWord(whole.substr(0, at)) && endsWord(whole.substr(at + text.size())))
            return true;
    }
    return false;
}

} // namespace quorvell
