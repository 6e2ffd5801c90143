// SPDX-License-Identifier: MIT
#include "Quorvell/tools/HeardWords.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestSounding = 16 * 1024; ///< Bytes; whoever talks on for longer asks no short question.

} // namespace

HeardWords::HeardWords(std::function<Instant()> wallClock, Put put)
    : m_wallClock(std::move(wallClock))
    , m_put(std::move(put))
{
}

void HeardWords::ask(const std::string& question)
{
    if (!m_pending || !m_pending->isAbout(question) || !m_pending->isAsked())
        m_pending.emplace(question);
}

PendingConsent::Answer HeardWords::settle(const std::string& question)
{
    using Answer = PendingConsent::Answer;
    if (!m_pending || !m_pending->isAbout(question))
        return Answer::none;
    const Answer answer = m_pending->answer(m_wallClock());
    if (answer != Answer::none)
        m_pending.reset();
    return answer;
}

/// Who answers quickly is heard before the reply is reported whole.
void HeardWords::userSaid(const std::string& text, Words)
{
    finishSounding();
    if (m_pending)
        m_pending->userSaid(text);
}

void HeardWords::assistantWordsHeard(const std::string& delta)
{
    if (m_pending && m_sounding.size() < longestSounding)
        m_sounding += delta;
}

void HeardWords::assistantSaid(const std::string& text)
{
    m_sounding.clear();
    if (m_pending)
        m_pending->assistantSaid(text, m_wallClock());
}

void HeardWords::finishSounding()
{
    if (const std::string said = std::exchange(m_sounding, {}); m_pending && !said.empty())
        m_pending->assistantSaid(said, m_wallClock());
}

void HeardWords::turnCompleted(TurnOutcome outcome)
{
    const bool isOver = outcome == TurnOutcome::answered || outcome == TurnOutcome::unanswered;
    if (isOver && m_put && m_pending && m_pending->isToBePut())
        m_put(m_pending->question(), [this, question = m_pending->question()] {
            return m_pending && m_pending->isToBePut() && m_pending->question() == question;
        });
}

void HeardWords::conversationEnded(const SessionEnd&)
{
    m_pending.reset();
    m_sounding.clear();
}

} // namespace quorvell
