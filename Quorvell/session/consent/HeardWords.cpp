// SPDX-License-Identifier: MIT
#include "Quorvell/session/consent/HeardWords.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestSounding = 16 * 1024; ///< Bytes; whoever talks on for longer asks no short question.
constexpr std::size_t mostWaiting = 32; ///< As many calls as run at a time.

} // namespace

HeardWords::HeardWords(Ports ports)
    : m_ports(std::move(ports))
{
}

// ---- What tools want

void HeardWords::ask(const std::string& question, Told told)
{
    const bool isTheSame = isOpen(question);
    if (!isTheSame && m_pending)
        closeWith(Event::replaced);
    m_told = std::move(told);
    if (isTheSame && m_pending->isAsked())
        return;
    m_pending.emplace(question);
    awaitLapse();
    if (m_ports.note)
        m_ports.note(QuietWatch::Consent::pending);
}

ConsentWords::Answer HeardWords::settle(const std::string& question)
{
    if (!isOpen(question))
        return Answer::none;
    const Answer answer = m_pending->answer(m_ports.scheduler.now());
    if (answer != Answer::none)
        close();
    return answer;
}

void HeardWords::settleWhenHeard(const std::string& question, std::function<void(Answer)> settled)
{
    const bool isAwaited =
        isOpen(question) && m_pending->isAsked() && m_ports.areWordsAwaited && m_ports.areWordsAwaited();
    if (!isAwaited || m_waiting.size() >= mostWaiting)
        return settled(settle(question));
    if (m_waiting.empty())
        m_wait = m_ports.scheduler.after(longestWait, [this] { answerWaiting(); });
    m_waiting.push_back({question, std::move(settled)});
}

void HeardWords::answerWaiting()
{
    m_wait.cancel();
    for (const Waiting& waiting : std::exchange(m_waiting, {}))
        waiting.settled(settle(waiting.question));
}

void HeardWords::withdraw(const std::string& question)
{
    if (isOpen(question))
        close();
}

void HeardWords::pressed(const std::string& question, bool isYes)
{
    if (!isOpen(question))
        return;
    const std::string words = isYes ? "yes" : "no";
    judge({.text = words, .ownWords = words, .how = HeardUtterance::How::pressed, .at = m_ports.scheduler.now()});
}

// ---- What is said

/// Who answers quickly is heard before the reply is reported whole.
void HeardWords::userSaid(const HeardUtterance& heard)
{
    finishSounding();
    judge(heard);
}

void HeardWords::judge(const HeardUtterance& heard)
{
    if (!m_pending)
        return;
    const bool wasAgreed = m_pending->isAgreed();
    const auto verdict = m_pending->userSaid(heard);
    if (!verdict)
        return;
    if (m_ports.log && *verdict != ConsentEvidence::Verdict::counts)
        m_ports.log->record("answer_not_counted", {{"why", std::string(nameOf(*verdict))}});
    if (m_pending->isAsked())
        return;
    if (m_ports.note)
        m_ports.note(QuietWatch::Consent::settled);
    if (!m_waiting.empty())
        m_wait = m_ports.scheduler.after(std::chrono::milliseconds::zero(), [this] { answerWaiting(); });
    if (m_pending->isAgreed() != wasAgreed || !m_pending->isAgreed())
        tell(m_pending->isAgreed() ? Event::agreed : Event::declined);
}

SessionTime HeardWords::saidUntil() const
{
    return m_ports.saidUntil ? m_ports.saidUntil() : m_ports.scheduler.now();
}

void HeardWords::assistantWordsHeard(const std::string& delta)
{
    if (m_pending && m_sounding.size() < longestSounding)
        m_sounding += delta;
}

void HeardWords::assistantSaid(const std::string& text)
{
    m_sounding.clear();
    assistantSaid(text, saidUntil());
}

void HeardWords::finishSounding()
{
    if (const std::string said = std::exchange(m_sounding, {}); !said.empty())
        assistantSaid(said, saidUntil());
}

void HeardWords::assistantSaid(const std::string& text, SessionTime at)
{
    if (!m_pending)
        return;
    const bool wasAsked = m_pending->isAsked();
    m_pending->assistantSaid(text, at);
    if (m_pending->isAsked() && !wasAsked)
        awaitLapse();
}

void HeardWords::turnCompleted(TurnOutcome outcome)
{
    const bool isOver = outcome == TurnOutcome::answered || outcome == TurnOutcome::unanswered;
    if (isOver && m_ports.put && m_pending && m_pending->isToBePut())
        m_ports.put(m_pending->question(), [this, question = m_pending->question()] {
            return m_pending && m_pending->isToBePut() && m_pending->question() == question;
        });
}

void HeardWords::stopped()
{
    m_sounding.clear();
    if (m_pending)
        pressed(m_pending->question(), false);
}

// ---- The end of a question

void HeardWords::awaitLapse()
{
    m_lapse = m_ports.scheduler.after(PendingConsent::longestMemory, [this] { closeWith(Event::lapsed); });
}

void HeardWords::close()
{
    m_pending.reset();
    m_told = nullptr;
    m_sounding.clear();
    m_lapse.cancel();
    if (m_ports.note)
        m_ports.note(QuietWatch::Consent::settled);
}

void HeardWords::closeWith(Event event)
{
    const Told told = std::move(m_told);
    close();
    if (told)
        told(event);
}

void HeardWords::tell(Event event)
{
    if (const Told told = m_told)
        told(event);
}

void HeardWords::ended()
{
    m_waiting.clear();
    m_wait.cancel();
    if (m_pending)
        closeWith(Event::ended);
}

} // namespace quorvell
