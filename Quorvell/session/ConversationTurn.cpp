#include "Quorvell/session/ConversationTurn.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

ConversationTurn::ConversationTurn(Ports ports, SessionSettings::Replies replies, std::chrono::milliseconds patience)
    : m_ports(ports)
    , m_replies(replies)
    , m_patience(patience)
{
}

// ---- What happens

void ConversationTurn::open()
{
    finishAssistantWords();
    m_tracker.requested();
    noteActivity();
}

void ConversationTurn::userTyped(const std::string& text)
{
    finishUserWords();
    open();
    m_ports.observer.userSaid(text, SessionObserver::Words::typed);
    remember("user", text);
}

void ConversationTurn::userWords(const std::string& delta)
{
    m_heard.add(m_heard.partial + delta, Transcript::Piece::partial);
    m_tracker.heard();
    noteActivity();
}

void ConversationTurn::backendStarted()
{
    finishUserWords();
    m_tracker.heard();
    m_tracker.backendStarted();
    noteActivity();
}

void ConversationTurn::backendFinished()
{
    m_tracker.backendFinished();
    noteActivity();
}

void ConversationTurn::voiceSound(std::span<const std::uint8_t> pcm)
{
    if (isShown())
        return;
    finishUserWords();
    m_ports.player.play(pcm);
    noteAnswer();
}

void ConversationTurn::voiceWords(const std::string& delta)
{
    // What was shown in writing is not shown again as the voice says it, perhaps long after.
    if (isShown() && (!m_tracker.isOpen || !m_written.empty()))
        return;
    finishUserWords();
    m_spoken += delta;
    if (!isShown())
        m_ports.observer.assistantWordsHeard(delta);
    noteAnswer();
}

void ConversationTurn::replyWritten(const std::string& text)
{
    finishUserWords();
    m_written += (m_written.empty() ? "" : " ") + text;
    if (!isShown())
        return noteActivity();
    m_ports.observer.assistantSaid(text);
    noteAnswer();
}

void ConversationTurn::problemShown()
{
    if (m_tracker.isOpen)
        noteAnswer();
}

void ConversationTurn::breakOff()
{
    if (m_tracker.isOpen)
        close(SessionObserver::TurnOutcome::brokenOff);
    end();
}

void ConversationTurn::end()
{
    finishUserWords();
    finishAssistantWords();
    m_tracker = {};
    m_completionTimer.cancel();
    m_patienceTimer.cancel();
}

// ---- When a turn is over

void ConversationTurn::noteActivity()
{
    if (m_tracker.isOpen)
        m_patienceTimer = m_ports.scheduler.after(m_patience, [this] { losePatience(); });
    scheduleCompletion();
}

void ConversationTurn::noteAnswer()
{
    m_tracker.answered(m_ports.scheduler.now() + m_ports.player.unplayed());
    noteActivity();
}

void ConversationTurn::scheduleCompletion()
{
    const auto at = m_tracker.completeAt();
    if (!at)
        return m_completionTimer.cancel();
    m_completionTimer = m_ports.scheduler.after(*at - m_ports.scheduler.now(), [this] { complete(); });
}

void ConversationTurn::complete()
{
    // A loudspeaker may have fallen behind what was reckoned when the sound arrived.
    if (m_ports.player.unplayed() > std::chrono::milliseconds::zero())
        return noteAnswer();
    close(SessionObserver::TurnOutcome::answered);
}

void ConversationTurn::losePatience()
{
    const bool hasAnswer = m_tracker.isAnswered || !m_written.empty();
    close(hasAnswer ? SessionObserver::TurnOutcome::answered : SessionObserver::TurnOutcome::unanswered);
}

void ConversationTurn::close(SessionObserver::TurnOutcome outcome)
{
    finishUserWords();
    finishAssistantWords();
    m_tracker.close();
    m_completionTimer.cancel();
    m_patienceTimer.cancel();
    m_ports.observer.turnCompleted(outcome);
}

// ---- Words

void ConversationTurn::finishUserWords()
{
    const std::string text = trimmed(std::exchange(m_heard, {}).text());
    if (text.empty())
        return;
    m_ports.observer.userSaid(text, SessionObserver::Words::spoken);
    remember("user", text);
}

void ConversationTurn::finishAssistantWords()
{
    const std::string spoken = trimmed(std::exchange(m_spoken, {}));
    const std::string written = trimmed(std::exchange(m_written, {}));
    const bool isWrittenBest = !written.empty() && (isShown() || spoken.empty());
    const std::string& text = isWrittenBest ? written : spoken;
    if (text.empty())
        return;
    const bool wasShownAsItCame = isShown() && isWrittenBest;
    if (!wasShownAsItCame)
        m_ports.observer.assistantSaid(text);
    remember("assistant", text);
}

void ConversationTurn::remember(const char* role, const std::string& text)
{
    m_conversation.push_back({role, text});
    if (m_conversation.size() > keptEntries)
        m_conversation.pop_front();
}

} // namespace quorvell
