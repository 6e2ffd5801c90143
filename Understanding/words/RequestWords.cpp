// SPDX-License-Identifier: MIT
#include "Understanding/words/RequestWords.h"

#include "QuorvellCore/text/Apostrophes.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view signs = ".,;:!?\"()[]-";

struct Contraction {
    std::string_view end;
    std::string_view word;
};

constexpr std::array contractions{Contraction{"'m", "am"}, Contraction{"'re", "are"}, Contraction{"'ve", "have"},
    Contraction{"'ll", "will"}, Contraction{"'d", "would"}};
/// Before "'s" it stands for "is"; after every other word for what somebody owns.
constexpr std::array<std::string_view, 11> askers{
    "one", "what", "when", "where", "who", "how", "that", "it", "there", "here", "which"};
struct Hurried {
    std::string_view typed;
    std::string_view first;
    std::string_view second;
};

/// As people type them in a hurry.
constexpr std::array hurried{Hurried{"whats", "what", "is"}, Hurried{"wheres", "where", "is"},
    Hurried{"thats", "that", "is"}, Hurried{"im", "i", "am"}, Hurried{"ive", "i", "have"}, Hurried{"dont", "do", "not"},
    Hurried{"mustnt", "must", "not"}, Hurried{"cant", "can", "not"}, Hurried{"lets", "let", "us"},
    Hurried{"didnt", "did", "not"}, Hurried{"doesnt", "does", "not"}, Hurried{"wont", "will", "not"},
    Hurried{"won't", "will", "not"}, Hurried{"can't", "can", "not"}, Hurried{"let's", "let", "us"}};

std::string withoutApostrophes(std::string text)
{
    std::erase(text, '\'');
    return text;
}

/// "do" and "not" from "don't"; one or two words.
std::vector<std::string> partsOf(const std::string& word)
{
    for (const auto& [end, second] : contractions) {
        if (word.size() > end.size() && word.ends_with(end))
            return {word.substr(0, word.size() - end.size()), std::string(second)};
    }
    for (const auto& [typed, first, second] : hurried) {
        if (word == typed)
            return {std::string(first), std::string(second)};
    }
    if (word.ends_with("n't"))
        return {word.substr(0, word.size() - 3), "not"};
    if (word.ends_with("'s") && std::ranges::find(askers, word.substr(0, word.size() - 2)) != askers.end())
        return {word.substr(0, word.size() - 2), "is"};
    return {withoutApostrophes(word)};
}

} // namespace

RequestWords::RequestWords(std::string_view utterance)
    : m_utterance(utterance)
{
    std::size_t position = 0;
    while (m_words.size() < most) {
        const std::size_t start = m_utterance.find_first_not_of(blanks, position);
        if (start == std::string::npos)
            return;
        position = std::min(m_utterance.find_first_of(blanks, start), m_utterance.size());
        const std::size_t first = m_utterance.find_first_not_of(signs, start);
        const std::size_t last = m_utterance.find_last_not_of(signs, position - 1);
        const bool isWord = first < position && last != std::string::npos && last >= first;
        if (isWord)
            add(m_utterance.substr(first, last + 1 - first), first, endOf(first, last + 1));
        if (!m_words.empty() && (!isWord || m_words.back().end < position))
            m_words.back().endsClause = true;
    }
    m_words.back().end = m_utterance.size();
}

/// The full stop of "5 p.m." belongs to it.
std::size_t RequestWords::endOf(std::size_t start, std::size_t end) const
{
    const bool isAbbreviated = end > start + 2 && m_utterance[end - 2] == '.' && end < m_utterance.size();
    return isAbbreviated && m_utterance[end] == '.' ? end + 1 : end;
}

void RequestWords::add(const std::string& text, std::size_t start, std::size_t end)
{
    for (std::string& part : partsOf(withPlainApostrophes(lowerCased(text))))
        m_words.push_back({std::move(part), start, end, false});
}

std::string_view RequestWords::at(std::size_t index) const
{
    return index < m_words.size() ? std::string_view(m_words[index].text) : std::string_view();
}

std::string RequestWords::said(std::size_t first, std::size_t end) const
{
    end = std::min(end, m_words.size());
    if (first >= end)
        return {};
    return m_utterance.substr(m_words[first].start, m_words[end - 1].end - m_words[first].start);
}

bool RequestWords::areAt(std::size_t index, const std::vector<std::string>& words) const
{
    if (index + words.size() > size())
        return false;
    for (std::size_t place = 0; place < words.size(); ++place) {
        if (m_words[index + place].text != words[place])
            return false;
    }
    return true;
}

} // namespace quorvell
