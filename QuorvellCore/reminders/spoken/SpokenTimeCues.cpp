// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/SpokenTimeCues.h"

#include "QuorvellCore/reminders/spoken/SpokenTimeNames.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <string>

namespace quorvell {

namespace {

bool holds(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

bool beginsWithOneOf(std::string_view word, std::span<const std::string_view> names)
{
    return std::ranges::any_of(
        names, [word](std::string_view name) { return !name.empty() && word.starts_with(name); });
}

bool beginsLikeHour(std::string_view word)
{
    return (word.front() >= '1' && word.front() <= '9') || beginsWithOneOf(word, SpokenTimeNames::hours);
}

/// "oh five" as well, and the tens of "twenty five".
bool beginsLikeMinute(std::string_view word)
{
    return word.front() == 'o' || beginsWithOneOf(word, SpokenTimeNames::minutes);
}

bool isWordLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Looks at one word after the other, with the two before it.
class SpokenTimeCueReader {
public:
    /// `text` is ASCII. `lower` is the same in lower case.
    SpokenTimeCueReader(std::string_view text, std::string_view lower)
        : m_text(text)
        , m_lower(lower)
    {
    }

    SpokenTimeCues read()
    {
        m_cues.oClock = holds(m_lower, "clock");
        for (std::size_t position = 0; position < m_lower.size();) {
            const std::size_t start = position;
            while (position < m_lower.size() && isWordLetter(m_lower[position]))
                ++position;
            if (position > start)
                lookAt(m_lower.substr(start, position - start));
            else
                ++position;
        }
        return m_cues;
    }

private:
    void lookAt(std::string_view word)
    {
        const bool followsPreposition = m_before == "at" || m_before == "by";
        m_cues.relative |= (m_before == "to" || m_before == "past" || m_before == "after" || m_before == "before"
                               || m_before == "till" || m_before == "til")
            && beginsLikeHour(word);
        // "At 5" stays as it is.
        m_cues.plain |= (followsPreposition && beginsWithOneOf(word, SpokenTimeNames::hours))
            || ((m_beforeThat == "at" || m_beforeThat == "by") && isDigit(m_before.front()) && beginsLikeMinute(word));
        const bool isMarker = word == "am" || word == "pm" || word == "a" || word == "p";
        m_cues.marked |= isMarker && !m_before.empty() && (beginsLikeHour(m_before) || beginsLikeMinute(m_before))
            && !isWritten(word);
        m_beforeThat = m_before;
        m_before = word;
    }

    /// "5 pm": the marker in lower case, with one space before it and without points.
    bool isWritten(std::string_view word) const
    {
        const auto start = static_cast<std::size_t>(word.data() - m_lower.data());
        const std::size_t end = start + word.size();
        return word.size() == 2 && std::ranges::all_of(m_before, isDigit) && m_text.substr(start, word.size()) == word
            && m_text[start - 1] == ' ' && m_before.data() + m_before.size() + 1 == word.data()
            && (end == m_text.size() || m_text[end] != '.');
    }

    std::string_view m_text;
    std::string_view m_lower;
    std::string_view m_before{};
    std::string_view m_beforeThat{};
    SpokenTimeCues m_cues;
};

} // namespace

SpokenTimeCues SpokenTimeCues::of(std::string_view text)
{
    const std::string lower = lowerCased(text);
    if (isAscii(text))
        return SpokenTimeCueReader(text, lower).read();
    const auto holdsAny = [&lower](std::initializer_list<std::string_view> parts) {
        return std::ranges::any_of(parts, [&lower](std::string_view part) { return holds(lower, part); });
    };
    return {holdsAny({"past", " to ", "after", "before", "til"}), holds(lower, "clock"),
        holdsAny({"am", "pm", ".m", " m"}), holdsAny({"at", "by"})};
}

} // namespace quorvell
