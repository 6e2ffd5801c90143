// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseTask.h"

#include "QuorvellCore/reminders/phrase/PhrasePatterns.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <initializer_list>

namespace quorvell {

namespace {

using Words = std::initializer_list<std::string_view>;

std::string withoutRanges(std::string_view text, const std::vector<TextRange>& ranges)
{
    std::string rest;
    rest.reserve(text.size());
    std::size_t kept = 0;
    for (const TextRange& range : ranges) {
        rest.append(text.substr(kept, range.start - kept)) += ' ';
        kept = range.end;
    }
    return rest.append(text.substr(kept));
}

std::string withSingleSpaces(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        if (!isWhiteSpace(nextCodePoint(text, position)))
            result.append(text.substr(start, position - start));
        else if (result.empty() || result.back() != ' ')
            result += ' ';
    }
    return result;
}

bool isOneOf(std::string_view word, Words words)
{
    const std::string lower = lowerCased(word);
    return std::find(words.begin(), words.end(), lower) != words.end();
}

/// Only with a space before it. The text has single spaces.
std::string_view withoutLastWordOf(std::string_view text, Words words)
{
    std::string_view rest = text;
    if (rest.ends_with(' '))
        rest.remove_suffix(1);
    const auto space = rest.rfind(' ');
    return space != std::string_view::npos && isOneOf(rest.substr(space + 1), words) ? rest.substr(0, space) : text;
}

/// Only with a space behind it. The text has single spaces.
std::string_view withoutFirstWordOf(std::string_view text, Words words)
{
    std::string_view rest = text;
    if (rest.starts_with(' '))
        rest.remove_prefix(1);
    const auto space = rest.find(' ');
    return space != std::string_view::npos && isOneOf(rest.substr(0, space), words) ? rest.substr(space + 1) : text;
}

} // namespace

std::string withoutLeadIn(std::string text)
{
    if (lowerCased(text).find("remind") == std::string::npos)
        return text; // Every lead-in has it; most texts on the wire have not.
    if (const auto match = PhrasePatterns::all().leadIn.find(text))
        text.erase(match->range.start, match->range.end - match->range.start);
    return text;
}

std::vector<TextRange> mergedRanges(std::vector<TextRange> ranges)
{
    std::sort(ranges.begin(), ranges.end(),
        [](const TextRange& left, const TextRange& right) { return left.start < right.start; });
    std::vector<TextRange> merged;
    for (const TextRange& range : ranges) {
        if (!merged.empty() && range.start <= merged.back().end)
            merged.back().end = std::max(merged.back().end, range.end);
        else
            merged.push_back(range);
    }
    return merged;
}

std::string wordsAt(std::string_view text, const std::vector<TextRange>& ranges)
{
    std::string words;
    for (const TextRange& range : ranges) {
        if (!words.empty())
            words += ' ';
        words += trimmed(text.substr(range.start, range.end - range.start));
    }
    return words;
}

std::string phraseTask(std::string_view text, const std::vector<TextRange>& ranges)
{
    const std::string spaced = withSingleSpaces(withoutLeadIn(withoutRanges(text, ranges)));
    std::string_view task = withoutLastWordOf(spaced, {"on", "at", "by", "in", "the", "for"});
    task = withoutFirstWordOf(task, {"on", "at", "by", "to"});
    return withUpperCaseFirst(trimmed(task, ",.;:-!"));
}

} // namespace quorvell
