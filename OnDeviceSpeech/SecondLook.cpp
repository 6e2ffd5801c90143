#include "OnDeviceSpeech/SecondLook.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace quorvell {

namespace {

using Words = std::vector<HeardWord>;
using WordSet = std::set<std::string, std::less<>>;

/// Words that make a time by themselves.
const WordSet& timeWords()
{
    static const WordSet words{"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten", "eleven",
        "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen", "twenty", "thirty",
        "forty", "fifty", "hundred", "a.m.", "p.m.", "o'clock", "noon", "midday", "midnight", "half", "quarter",
        "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday", "january", "february", "march",
        "april", "may", "june", "july", "august", "september", "october", "november", "december", "first", "second",
        "third", "fourth", "fifth", "sixth", "seventh", "eighth", "ninth", "tenth", "eleventh", "twelfth", "thirteenth",
        "fourteenth", "fifteenth", "sixteenth", "seventeenth", "eighteenth", "nineteenth", "twentieth", "thirtieth",
        "today", "tonight", "tomorrow", "morning", "afternoon", "evening", "night", "day", "days", "week", "weeks",
        "month", "year", "hour", "hours", "minute", "minutes", "weekday", "weekdays", "daily", "weekly", "monthly",
        "yearly"};
    return words;
}

/// Words that belong to a time only beside such a word.
const WordSet& timeLinks()
{
    static const WordSet words{"at", "on", "in", "by", "the", "of", "past", "to", "after", "an", "a", "and", "every",
        "each", "next", "this", "coming", "oh", "around", "about", "for", "from", "now", "couple"};
    return words;
}

/// How a request begins, up to what it is about.
const WordSet& frameWords()
{
    static const WordSet words{"hey", "hi", "okay", "quorvell", "please", "can", "could", "would", "will", "you", "i",
        "want", "need", "like", "i'd", "to", "remind", "me", "set", "make", "create", "add", "give", "a", "reminder",
        "about", "that", "for", "of", "don't", "let", "forget", "sure", "remember", "note", "take", "keep", "down",
        "write", "save", "new", "find", "my", "notes", "read", "search", "the", "wake", "up", "do", "not", "be",
        "reminded", "must", "have", "help", "schedule", "put", "in"};
    return words;
}

bool isIn(const WordSet& set, const HeardWord& word)
{
    return set.contains(word.text);
}

/// Which words are time words: those that are, and links that touch them before (or between two of them).
std::vector<bool> timeMarks(const Words& words)
{
    std::vector<bool> marks(words.size());
    for (std::size_t index = 0; index < words.size(); ++index)
        marks[index] = isIn(timeWords(), words[index]);
    for (std::size_t index = words.size(); index-- > 1;) {
        if (marks[index] && isIn(timeLinks(), words[index - 1]))
            marks[index - 1] = true;
    }
    return marks;
}

/// Which words are free: neither time words nor the frame at the beginning (of what is left after a leading time).
std::vector<bool> freeMarks(const Words& words)
{
    std::vector<bool> free = timeMarks(words);
    free.flip();
    bool isInFrame = true;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (!free[index])
            continue;
        isInFrame = isInFrame && isIn(frameWords(), words[index]);
        if (isInFrame)
            free[index] = false;
    }
    return free;
}

/// Words that lie, by their middle, inside a stretch of time.
Words wordsWithin(const Words& words, std::chrono::milliseconds start, std::chrono::milliseconds end)
{
    Words inside;
    std::copy_if(words.begin(), words.end(), std::back_inserter(inside), [&](const HeardWord& word) {
        const auto middle = (word.start + word.end) / 2;
        return middle >= start && middle < end;
    });
    return inside;
}

/// A second look that swallowed its neighbours is no help.
bool isPlausible(const Words& look)
{
    return !look.empty()
        && std::none_of(look.begin(), look.end(), [](const HeardWord& word) { return word.text == "reminder"; });
}

/// Length of the longest common subsequence of the words that `counts` admits.
template <typename Counts> std::size_t common(const Words& left, const Words& right, Counts counts)
{
    std::vector<std::size_t> previous(right.size() + 1);
    for (std::size_t row = 0; row < left.size(); ++row) {
        std::vector<std::size_t> current(right.size() + 1);
        for (std::size_t column = 0; column < right.size(); ++column) {
            const bool isSame = counts(row) && left[row].text == right[column].text;
            current[column + 1] = isSame ? previous[column] + 1 : std::max(previous[column + 1], current[column]);
        }
        previous = std::move(current);
    }
    return previous.back();
}

} // namespace

Words SecondLook::merged(const Words& command, const Words& mixed)
{
    const std::vector<bool> free = freeMarks(command);
    Words result;
    for (std::size_t index = 0; index < command.size();) {
        if (!free[index]) {
            result.push_back(command[index++]);
            continue;
        }
        std::size_t end = index;
        while (end < command.size() && free[end])
            ++end;
        const Words look = wordsWithin(mixed, command[index].start, command[end - 1].end);
        if (isPlausible(look))
            result.insert(result.end(), look.begin(), look.end());
        else
            result.insert(result.end(), command.begin() + static_cast<std::ptrdiff_t>(index),
                command.begin() + static_cast<std::ptrdiff_t>(end));
        index = end;
    }
    return result;
}

bool SecondLook::agree(const Words& command, const Words& mixed)
{
    if (command.empty() || mixed.empty())
        return false;
    const std::vector<bool> free = freeMarks(command);
    const auto fixed = static_cast<std::size_t>(std::count(free.begin(), free.end(), false));
    const std::size_t sameFixed = common(command, mixed, [&](std::size_t index) { return !free[index]; });
    const std::size_t same = common(command, mixed, [](std::size_t) { return true; });
    return fixed > 0 && 3 * sameFixed >= 2 * fixed && 2 * same >= std::min(command.size(), mixed.size());
}

} // namespace quorvell
