// SPDX-License-Identifier: MIT
#include "LiveService/voice/SpokenText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

constexpr std::array<std::string_view, 8> shortForms{"mr", "mrs", "ms", "dr", "st", "no", "vs", "etc"};

bool isSpace(char letter)
{
    return letter == ' ' || letter == '\n' || letter == '\t' || letter == '\r';
}

bool isSmallLetter(char letter)
{
    return letter >= 'a' && letter <= 'z';
}

/// The word that ends before `end`, in lower case.
std::string wordBefore(std::string_view text, std::size_t end)
{
    std::size_t start = end;
    while (start > 0 && !isSpace(text[start - 1]))
        --start;
    return asciiLowerCased(text.substr(start, end - start));
}

/// Whether the full stop at `position` belongs to a short form ("p.m.", "Dr.") and not to the sentence.
bool belongsToShortForm(std::string_view text, std::size_t position, std::size_t next)
{
    const std::string word = wordBefore(text, position);
    if (std::ranges::find(shortForms, word) != shortForms.end())
        return true;
    const bool isInitials = word.size() == 1 || word.find('.') != std::string::npos;
    return isInitials && (isSmallLetter(text[next]) || word.size() == 1);
}

bool endsSentence(std::string_view text, std::size_t position)
{
    if (text[position] == '\n')
        return true;
    if (text[position] != '.' && text[position] != '!' && text[position] != '?')
        return false;
    std::size_t next = position + 1;
    if (next == text.size())
        return true;
    if (!isSpace(text[next]))
        return false;
    while (next < text.size() && isSpace(text[next]))
        ++next;
    return next == text.size() || text[position] != '.' || !belongsToShortForm(text, position, next);
}

/// Where to cut an over-long sentence: the last space in reach, else anywhere that leaves characters whole.
std::size_t lengthInReach(std::string_view sentence)
{
    if (sentence.size() <= SpokenText::longestSentence)
        return sentence.size();
    const std::size_t space = sentence.rfind(' ', SpokenText::longestSentence);
    if (space != std::string_view::npos && space > 0)
        return space;
    std::size_t cut = SpokenText::longestSentence;
    while (cut > 0 && (static_cast<unsigned char>(sentence[cut]) & 0xC0) == 0x80)
        --cut;
    return std::max<std::size_t>(cut, 1);
}

/// "17:30" becomes "5:30 PM".
std::string withTwelveHourClock(std::string text)
{
    static const Pattern clock("(?<![\\d:.])(1[3-9]|2[0-3]):([0-5]\\d)(?![\\d:])");
    for (auto match = clock.find(text); match; match = clock.find(text)) {
        const std::string hour = std::to_string(std::atoi(match->texts[0].c_str()) - 12);
        const std::string minutes = match->texts[1] == "00" ? "" : ":" + match->texts[1];
        text.replace(match->range.start, match->range.end - match->range.start, hour + minutes + " PM");
    }
    return text;
}

void addSentence(std::vector<std::string>& result, std::string_view sentence)
{
    std::string rest = trimmed(sentence);
    while (!rest.empty()) {
        const std::size_t length = lengthInReach(rest);
        result.push_back(trimmed(std::string_view(rest).substr(0, length)));
        rest = trimmed(std::string_view(rest).substr(length));
    }
}

} // namespace

std::vector<std::string> SpokenText::sentences(std::string_view text)
{
    std::vector<std::string> result;
    std::size_t start = 0;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (!endsSentence(text, position))
            continue;
        addSentence(result, text.substr(start, position + 1 - start));
        start = position + 1;
    }
    addSentence(result, text.substr(start));
    return result;
}

std::vector<std::string> SpokenText::groups(std::string_view sentence)
{
    std::vector<std::string> result;
    std::string group;
    int words = 0;
    for (std::size_t position = 0; position < sentence.size(); ++position) {
        const bool startsWord = position > 0 && isSpace(sentence[position]) && !isSpace(sentence[position - 1]);
        if (startsWord && ++words == wordsInGroup) {
            result.push_back(std::move(group));
            group.clear();
            words = 0;
        }
        group += sentence[position];
    }
    if (!group.empty())
        result.push_back(std::move(group));
    return result;
}

std::string SpokenText::voiced(std::string_view sentence)
{
    std::string result(sentence);
    std::ranges::replace_if(
        result, [](char letter) { return std::string_view("*_#`|<>[]{}~\\^").find(letter) != std::string_view::npos; },
        ' ');
    return trimmed(withTwelveHourClock(std::move(result)));
}

} // namespace quorvell
