// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/PendingConsent.h"

#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/safety/SpokenWords.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// A question is asked without its mark too, for transcripts of speech often have none.
constexpr auto questionMarks = std::to_array<std::string_view>({"?", "？", "؟", "⁇", "⁈", "⁉", "‽"});
constexpr auto asking = std::to_array<std::string_view>(
    {"would you", "do you", "don't you", "did you", "will you", "won't you", "could you", "can you", "have you",
        "are you", "should i", "shall i", "shall we", "can i", "may i", "could i", "want me to", "is it", "is that",
        "yes or no", "say yes", "if you want", "if you like", "if you'd like", "let me know", "tell me"});

bool asks(std::string_view text, std::string_view words)
{
    const auto isIn = [](std::string_view where) {
        return [where](std::string_view what) { return where.find(what) != std::string_view::npos; };
    };
    return std::any_of(questionMarks.begin(), questionMarks.end(), isIn(text))
        || std::any_of(asking.begin(), asking.end(),
            [words](std::string_view phrase) { return words.find(" " + std::string(phrase) + " ") != words.npos; });
}

/// How many question marks there are; one each that stands in the question is the question's own.
std::size_t marksIn(std::string_view text)
{
    std::size_t count = 0;
    for (const std::string_view mark : questionMarks)
        for (std::size_t at = text.find(mark); at != std::string_view::npos; at = text.find(mark, at + mark.size()))
            ++count;
    return count;
}

/// What people type for a yes, spelled out.
std::string spelledOut(const std::string& answer)
{
    constexpr auto shortYes = std::to_array<std::string_view>({"y", "ye", "yess", "yesss", "yeap"});
    std::string word = lowerCased(trimmed(answer));
    while (!word.empty() && (word.back() == '.' || word.back() == '!'))
        word.pop_back();
    return std::find(shortYes.begin(), shortYes.end(), word) == shortYes.end() ? answer : "yes";
}

} // namespace

bool PendingConsent::asksSomething(std::string_view text)
{
    return asks(text, spokenWords(text));
}

bool PendingConsent::isAbout(std::string_view question) const
{
    return spokenWords(m_question) == spokenWords(question);
}

void PendingConsent::assistantSaid(std::string_view text, std::chrono::milliseconds at)
{
    const std::string words = spokenWords(text);
    if (words == " ")
        return;
    const std::string question = spokenWords(m_question);
    const bool endsWithQuestion = words.ends_with(question);
    const std::string_view before =
        std::string_view(words).substr(0, endsWithQuestion ? words.size() - question.size() + 1 : words.size());
    const bool asksElse =
        endsWithQuestion ? marksIn(text) > marksIn(m_question) || asks("", before) : asks(text, words);
    if (asksElse) {
        m_state = State::borrowed;
    } else if (endsWithQuestion && m_state != State::borrowed) {
        m_state = State::asked;
        m_askedAt = at;
        m_heardSinceAsk.clear();
        m_ownSinceAsk.clear();
    } else if (m_state == State::asked) {
        m_state = State::unasked; // It is no longer the last thing that they heard.
    }
}

std::optional<ConsentEvidence::Verdict> PendingConsent::userSaid(const HeardUtterance& heard)
{
    if (m_state != State::asked && m_state != State::agreed)
        return std::nullopt;
    const auto verdict = ConsentEvidence::judge(heard, m_askedAt);
    if (verdict != ConsentEvidence::Verdict::counts) {
        if (SpokenConsent::hesitates(heard.text))
            m_state = State::declined;
        return verdict;
    }
    m_heardSinceAsk += (m_heardSinceAsk.empty() ? "" : " ") + spelledOut(heard.text);
    m_ownSinceAsk += (m_ownSinceAsk.empty() ? "" : " ") + spelledOut(heard.ownWords);
    if (m_state == State::asked && SpokenConsent::isStillThinking(m_heardSinceAsk))
        return verdict;
    const bool agrees =
        SpokenConsent::agreesTo(m_question, m_heardSinceAsk) && SpokenConsent::agreesTo(m_question, m_ownSinceAsk);
    m_state = agrees ? State::agreed : State::declined;
    return verdict;
}

PendingConsent::Answer PendingConsent::answer(std::chrono::milliseconds now) const
{
    switch (m_state) {
    case State::borrowed:
        return Answer::borrowed;
    case State::declined:
        return Answer::no;
    case State::agreed:
        return now - m_askedAt > longestMemory ? Answer::none : Answer::yes;
    case State::unasked:
    case State::asked:
        return Answer::none;
    }
    return Answer::none;
}

} // namespace quorvell
