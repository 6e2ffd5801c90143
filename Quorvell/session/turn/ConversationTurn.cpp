// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/ConversationTurn.h"

#include "Quorvell/session/hearing/MicrophoneStream.h"
#include "Quorvell/session/turn/WithinBound.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

std::chrono::milliseconds lengthOf(std::span<const std::uint8_t> pcm)
{
    return std::chrono::milliseconds(pcm.size() * 1000 / (2 * MicrophoneStream::sampleRateHz));
}

} // namespace

ConversationTurn::ConversationTurn(Ports ports, SessionSettings::Replies replies, std::chrono::milliseconds patience)
    : m_ports(std::move(ports))
    , m_replies(replies)
    , m_patience(patience)
    , m_stopWords(m_ports.scheduler, [this] { m_ports.report(turn_report::StopSaid{}); })
{
}

// ---- What happens

void ConversationTurn::open()
{
    finishAssistantWords();
    noteBeginning();
    m_tracker.requested();
    noteActivity();
}

void ConversationTurn::userTyped(const std::string& text, const std::string& ownWords)
{
    finishUserWords();
    m_bargedIn = false;
    open();
    userAsked(text, ownWords, SessionAudience::Words::typed);
    m_ports.watch.userSaid({text, ownWords, HeardUtterance::How::typed, m_ports.scheduler.now()});
    m_stopWords.complete(ownWords);
}

void ConversationTurn::userOverheard(const std::string& text)
{
    open();
    userAsked(text, text, SessionAudience::Words::spoken);
    // Not by this conversation's microphone.
    m_ports.watch.userSaid({.text = text, .ownWords = text, .at = m_ports.scheduler.now()});
    m_stopWords.complete(text);
}

void ConversationTurn::lateUserWords(const std::string& delta)
{
    m_isHeardLate = true;
    hear(delta);
    m_lateWordsTimer = m_ports.scheduler.after(lateWordsSettle, [this] { finishUserWords(); });
    noteActivity();
}

void ConversationTurn::forgetUserWords()
{
    m_ports.speech.wordsForgotten();
    m_heard = {};
    m_isHeardLate = false;
    m_lateWordsTimer.cancel();
    m_stopWords.forget();
}

void ConversationTurn::hear(const std::string& delta)
{
    m_heard.partial += withinBound(delta, m_heard.partial.size(), longestHeard);
    m_stopWords.hear(m_heard.partial);
}

void ConversationTurn::userWords(const std::string& delta)
{
    hear(delta);
    noteBeginning();
    m_tracker.heard();
    noteActivity();
}

void ConversationTurn::backendStarted()
{
    finishUserWords();
    noteBeginning();
    m_tracker.heard();
    m_tracker.backendStarted();
    m_isResultToTell = false;
    noteActivity();
}

void ConversationTurn::acted(Act act)
{
    m_actedSinceWords = true;
    m_isResultToTell = false;
    m_hasSpokenSinceAct = m_hasSpokenSinceAct && act == Act::onEarlier;
}

void ConversationTurn::resultGiven()
{
    m_isResultToTell = !m_actedSinceWords || m_hasSpokenSinceAct;
}

void ConversationTurn::backendFinished()
{
    m_tracker.backendFinished();
    noteActivity();
}

void ConversationTurn::voiceSound(std::span<const std::uint8_t> pcm)
{
    if (isShown() || m_bargedIn || m_ports.player.unplayed() > mostUnplayed)
        return;
    finishUserWords();
    startNewCaption();
    m_spoken.addSound(lengthOf(pcm));
    m_ports.speech.voiceSounds(pcm, m_ports.scheduler.now());
    m_ports.player.play(pcm);
    noteAnswer();
}

void ConversationTurn::voiceWords(const std::string& delta)
{
    // What was shown in writing is not shown again as the voice says it, perhaps long after.
    if (m_bargedIn || (isShown() && (!m_tracker.isOpen || !m_written.empty())))
        return;
    finishUserWords();
    startNewCaption();
    if (const std::string words = withinBound(delta, m_spokenBytes, longestReply); !words.empty()) {
        m_spokenBytes += words.size();
        m_spoken.addWords(words);
        m_ports.speech.voiceSays(words, m_ports.scheduler.now());
        if (!isShown())
            m_ports.observer.assistantWordsHeard(words);
    }
    noteAnswer();
}

void ConversationTurn::replyWritten(const std::string& text)
{
    if (m_bargedIn)
        return;
    finishUserWords();
    const std::string kept = withinBound(text, m_written.size(), longestReply);
    if (!kept.empty())
        m_written += (m_written.empty() ? "" : " ") + kept;
    if (!isShown())
        return noteActivity();
    if (!kept.empty()) {
        m_ports.speech.shown(m_ports.scheduler.now());
        m_ports.observer.assistantSaid(kept);
    }
    noteAnswer();
}

void ConversationTurn::replyGrew(const std::string& delta)
{
    if (!m_bargedIn && isShown())
        m_ports.observer.assistantReplyGrew(delta);
    noteActivity();
}

void ConversationTurn::thinking(const std::string& delta)
{
    m_thoughtSummary.add(delta);
    m_ports.observer.thoughtChanged(m_thoughtSummary);
    noteActivity();
}

void ConversationTurn::serviceFinished()
{
    m_tracker.serviceFinished();
    noteActivity();
}

void ConversationTurn::problemShown()
{
    if (m_tracker.isOpen)
        noteAnswer();
}

bool ConversationTurn::connectionLost()
{
    const bool isAnswerComplete =
        m_tracker.isAnswered && !m_tracker.isBackendWorking && !isReplyArriving() && !isRequestLeft();
    if (!m_tracker.isOpen || isAnswerComplete)
        return false;
    finishAssistantWords();
    m_bargedIn = false;
    m_tracker.requested();
    m_tracker.backendStarted();
    noteActivity();
    return true;
}

void ConversationTurn::breakOff()
{
    if (m_tracker.isOpen)
        close(SessionAudience::TurnOutcome::brokenOff);
    end();
}

void ConversationTurn::end()
{
    finishUserWords();
    finishAssistantWords();
    m_conversation.settle();
    m_bargedIn = m_isResultToTell = false;
    m_tracker = {};
    m_completionTimer.cancel();
    m_patienceTimer.cancel();
}

void ConversationTurn::cutReply(Cut cut)
{
    const auto played = m_ports.player.played() - m_playedBefore;
    m_ports.player.stop();
    m_ports.speech.voiceCut(m_ports.scheduler.now());
    m_tracker.outputUntil = std::min(m_tracker.outputUntil, m_ports.scheduler.now());
    const std::string heard = m_spoken.heard(played);
    m_spoken = {};
    m_spokenBytes = 0;
    if (!isShown() && !heard.empty())
        m_spoken.addWords(heard);
    m_bargedIn = true;
    if (m_tracker.isBackendWorking && cut == Cut::spokenOver)
        finishAssistantWords();
    else if (m_tracker.isOpen)
        close(SessionAudience::TurnOutcome::interrupted);
}

bool ConversationTurn::isVoiceSounding() const
{
    return !isShown() && m_ports.player.unplayed() > std::chrono::milliseconds::zero();
}

bool ConversationTurn::modelGenerating() const
{
    const bool isBetweenTwoPieces = m_tracker.isOpen && m_tracker.isAnswered && !m_tracker.isDeclaredOver
        && m_ports.scheduler.now() - m_tracker.outputUntil < voiceGap;
    return isVoiceSounding() || (!isShown() && isBetweenTwoPieces);
}

bool ConversationTurn::isReplyArriving() const
{
    return m_tracker.isOpen && m_tracker.isAnswered && m_ports.scheduler.now() - m_lastOutput < arrivalGap;
}

// ---- When a turn is over

void ConversationTurn::noteBeginning()
{
    if (m_tracker.isOpen)
        return;
    m_beganAt = m_ports.scheduler.now();
    if (m_thoughtSummary.isEmpty())
        return;
    m_thoughtSummary.clear();
    m_ports.observer.thoughtChanged(m_thoughtSummary);
}

void ConversationTurn::noteActivity()
{
    if (m_tracker.isOpen)
        m_patienceTimer = m_ports.scheduler.after(m_patience, [this] { losePatience(); });
    scheduleCompletion();
}

void ConversationTurn::noteAnswer()
{
    m_spokeSinceRequest |= !m_isResultToTell;
    noteBeginning();
    m_lastOutput = m_ports.scheduler.now();
    m_tracker.answered(m_lastOutput + m_ports.player.unplayed());
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
    if (const auto unplayed = m_ports.player.unplayed(); unplayed > std::chrono::milliseconds::zero()) {
        m_tracker.answered(m_ports.scheduler.now() + unplayed);
        return noteActivity();
    }
    if (isRequestLeft())
        return m_ports.report(turn_report::RequestLeft{});
    close(SessionAudience::TurnOutcome::answered);
}

bool ConversationTurn::isRequestLeft() const
{
    const bool areWordsComing = isHearingWords() && !m_isHeardLate;
    const bool areWordsLeft = !m_actedSinceWords && !m_spokeSinceRequest && !m_conversation.openRequests().empty();
    return m_isResultToTell && (areWordsComing || areWordsLeft);
}

void ConversationTurn::losePatience()
{
    const bool hasAnswer = m_tracker.isAnswered || !m_written.empty();
    close(hasAnswer ? SessionAudience::TurnOutcome::answered : SessionAudience::TurnOutcome::unanswered);
    if (!m_tracker.isBackendWorking)
        return;
    m_tracker.backendFinished();
    m_ports.report(turn_report::GivenUp{});
}

void ConversationTurn::close(SessionAudience::TurnOutcome outcome)
{
    finishUserWords();
    finishAssistantWords();
    m_conversation.settle();
    m_isResultToTell = false;
    m_tracker.close();
    m_completionTimer.cancel();
    m_patienceTimer.cancel();
    m_ports.report(turn_report::Closed{m_beganAt});
    m_ports.observer.turnCompleted(outcome);
}

// ---- Words

void ConversationTurn::userAsked(const std::string& text, const std::string& ownWords, SessionAudience::Words words)
{
    ++m_requests;
    m_actedSinceWords = false;
    m_spokeSinceRequest = false;
    if (words == SessionAudience::Words::typed)
        m_recentRequests.typed(ownWords, m_ports.scheduler.now());
    else
        m_recentRequests.heard(ownWords, m_ports.scheduler.now());
    m_conversation.userAsked(text);
    m_ports.observer.userSaid(text, words);
}

void ConversationTurn::finishUserWords()
{
    const std::string text = trimmed(m_heard.text());
    const bool isLate = m_isHeardLate;
    const HeardUtterance heard = m_ports.speech.complete(text, m_ports.scheduler.now());
    m_stopWords.complete(text);
    forgetUserWords();
    if (text.empty())
        return;
    if (isLate)
        userAskedBefore(text);
    else
        userAsked(text, text, SessionAudience::Words::spoken);
    m_ports.watch.userSaid(heard);
}

void ConversationTurn::userAskedBefore(const std::string& text)
{
    m_recentRequests.heard(text, m_ports.scheduler.now());
    m_conversation.userAskedBefore(text);
    m_ports.observer.userSaid(text, SessionAudience::Words::spoken);
}

void ConversationTurn::startNewCaption()
{
    if (m_spoken.isEmpty())
        m_playedBefore = m_ports.player.played() + m_ports.player.unplayed();
}

void ConversationTurn::finishAssistantWords()
{
    const std::string spoken = trimmed(std::exchange(m_spoken, {}).text());
    const std::string written = trimmed(std::exchange(m_written, {}));
    m_spokenBytes = 0;
    const bool isWrittenBest = !written.empty() && (isShown() || (spoken.empty() && !m_bargedIn));
    const std::string& text = isWrittenBest ? written : spoken;
    if (text.empty())
        return;
    const bool wasShownAsItCame = isShown() && isWrittenBest;
    if (!wasShownAsItCame) {
        if (isWrittenBest || isShown())
            m_ports.speech.shown(m_ports.scheduler.now());
        m_ports.observer.assistantSaid(text);
    }
    m_conversation.assistantSaid(text);
}

} // namespace quorvell
