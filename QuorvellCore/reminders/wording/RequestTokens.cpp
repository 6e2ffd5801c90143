// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include "QuorvellCore/reminders/wording/RequestVocabulary.h"
#include "QuorvellCore/text/CodePoints.h"

#include <algorithm>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;

constexpr char32_t curlyApostrophe = 0x2019;

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool isAsciiLetter(char letter)
{
    return letter >= 'a' && letter <= 'z';
}

/// Quotes and dashes beyond ASCII are marks, every other such letter belongs to a word.
bool isWordLetter(char32_t letter)
{
    constexpr char32_t firstPunctuation = 0x2010;
    constexpr char32_t lastPunctuation = 0x2027;
    if (letter < 0x80)
        return isAsciiLetter(static_cast<char>(letter)) || isDigit(static_cast<char>(letter)) || letter == '_';
    return !isWhiteSpace(letter) && !(letter >= firstPunctuation && letter <= lastPunctuation);
}

bool isLetterAt(std::string_view text, std::size_t position)
{
    return position < text.size() && isWordLetter(nextCodePoint(text, position));
}

/// Of "5:30" and "1.5", of "can't", of "p.m.": a mark that does not end the word before it.
bool joins(std::string_view text, std::size_t start, std::size_t position, char32_t mark, std::size_t next)
{
    const bool isBetweenDigits =
        position > start && isDigit(text[position - 1]) && next < text.size() && isDigit(text[next]);
    if (mark == ':' || mark == '.') {
        const std::string_view word = text.substr(start, position - start);
        const bool isMarker = mark == '.' && (word.ends_with('a') || word.ends_with('p'))
            && (word.size() == 1 || isDigit(word[word.size() - 2])) && text.substr(next).starts_with('m')
            && !isLetterAt(text, next + 1);
        const bool isMarkerEnd = mark == '.' && (word.ends_with("a.m") || word.ends_with("p.m"));
        return isBetweenDigits || isMarker || isMarkerEnd;
    }
    return (mark == '\'' || mark == curlyApostrophe) && isLetterAt(text, next);
}

std::size_t endOfWord(std::string_view text, std::size_t start)
{
    std::size_t position = start;
    while (position < text.size()) {
        std::size_t next = position;
        const char32_t letter = nextCodePoint(text, next);
        if (!isWordLetter(letter) && (position == start || !joins(text, start, position, letter, next)))
            break;
        position = next;
    }
    return position;
}

bool isMarker(std::string_view word)
{
    return word == "am" || word == "pm" || word.starts_with("a.m") || word.starts_with("p.m");
}

Kind kindOf(std::string_view word)
{
    if (!isDigit(word.front()))
        return Kind::word;
    const auto isFigure = [](char letter) { return isDigit(letter) || letter == ':' || letter == '.'; };
    const auto figuresEnd = static_cast<std::size_t>(std::ranges::find_if_not(word, isFigure) - word.begin());
    const std::string_view figures = word.substr(0, figuresEnd);
    const std::string_view rest = word.substr(figuresEnd);
    const auto mark = figures.find_first_of(":.");
    const bool isWhole = mark == std::string_view::npos;
    const bool isShaped = figures.substr(0, mark).size() <= 2
        && (isWhole || (figures.size() == mark + 3 && figures.find_first_of(":.", mark + 1) == std::string_view::npos));
    if (rest.empty())
        return isWhole ? Kind::number : isShaped ? Kind::clock : Kind::figures;
    if (isMarker(rest) && isShaped)
        return Kind::clock;
    const bool isOrdinal = rest == "st" || rest == "nd" || rest == "rd" || rest == "th";
    return isWhole && isOrdinal && figures.size() <= 2 ? Kind::ordinal : Kind::word;
}

bool hasCapitalAt(std::string_view input, std::size_t position)
{
    return position < input.size() && input[position] >= 'A' && input[position] <= 'Z';
}

} // namespace

RequestTokens::RequestTokens(const LowerCasedText& lower, std::string_view input)
{
    const std::string_view text = lower.text();
    constexpr std::size_t usualLength = 4; // Bytes of a word with the space behind it, rather fewer than many.
    m_tokens.reserve(text.size() / usualLength + 1);
    bool followsSpace = true;
    for (std::size_t position = 0; position < text.size();) {
        std::size_t next = position;
        const char32_t letter = nextCodePoint(text, next);
        if (isWhiteSpace(letter)) {
            followsSpace = true;
            position = next;
            continue;
        }
        const bool isWord = isWordLetter(letter);
        const std::size_t end = isWord ? endOfWord(text, position) : next;
        RequestToken token;
        token.text = text.substr(position, end - position);
        token.kind = isWord ? kindOf(token.text) : Kind::mark;
        token.range = {position, end};
        token.hasCapital = hasCapitalAt(input, lower.inputPosition(position));
        token.followsSpace = followsSpace;
        token.terms = isWord ? RequestVocabulary::termsOf(token.text) : RequestVocabulary::termsOfMark(token.text);
        m_tokens.push_back(token);
        followsSpace = false;
        position = end;
    }
    findStart();
}

const RequestToken& RequestTokens::token(int index) const
{
    static const RequestToken none{Kind::mark, {}, {}, false, true, {}, RequestToken::Meaning::task};
    return isInside(index) ? m_tokens[static_cast<std::size_t>(index)] : none;
}

bool RequestTokens::is(int index, Words words) const
{
    return std::ranges::find(words, token(index).text) != words.end();
}

void RequestTokens::findStart()
{
    constexpr int longestLeadIn = 8;
    for (int index = 0; index < std::min(size(), longestLeadIn); ++index) {
        const bool isLeadIn = (is(index, {"me"}) && is(index - 1, {"remind"})) || is(index, {"reminder"});
        if (!isLeadIn)
            continue;
        m_start = index + 1;
        while (is(m_start, {"to", "about", "that", "for", ":"}))
            ++m_start;
        return;
    }
}

void RequestTokens::markTimes(const std::vector<TextRange>& ranges)
{
    auto range = ranges.begin();
    for (RequestToken& token : m_tokens) {
        while (range != ranges.end() && range->end <= token.range.start)
            ++range;
        if (range != ranges.end() && range->start < token.range.end)
            token.meaning = RequestToken::Meaning::time;
    }
}

void RequestTokens::markQuotes()
{
    constexpr int longest = 40; // Tokens; an opening quote further from its end is none.
    for (int index = 0; index < size(); ++index) {
        const bool isOpening = is(index, {"\"", "“", "”", "'", "‘"}) && token(index).followsSpace;
        int end = index + 1;
        while (isOpening && isInside(end) && end < index + longest && !closesQuote(index, end))
            ++end;
        if (!isOpening || !isInside(end) || !closesQuote(index, end))
            continue;
        for (; index < end; ++index)
            mark(index, RequestToken::Meaning::task);
    }
}

bool RequestTokens::closesQuote(int opening, int index) const
{
    const bool isDouble = is(opening, {"\"", "“", "”"});
    const bool endsWord = !isInside(index + 1) || token(index + 1).followsSpace || token(index + 1).kind == Kind::mark;
    return endsWord && (isDouble ? is(index, {"\"", "“", "”"}) : is(index, {"'", "’"}));
}

} // namespace quorvell
