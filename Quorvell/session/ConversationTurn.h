#pragma once

#include "Quorvell/session/AudioPlayer.h"
#include "Quorvell/session/Scheduler.h"
#include "Quorvell/session/SessionObserver.h"
#include "Quorvell/session/SessionSettings.h"
#include "Quorvell/session/TurnTracker.h"
#include "QuorvellCore/live/history/Transcript.h"
#include "QuorvellCore/live/wire/LiveHistoryEntry.h"

#include <deque>
#include <string>

namespace quorvell {

/// What is said on both sides, turn by turn: gathers the words, sees when a turn is over, tells the observer, and
/// remembers the conversation. Main thread; its ports are borrowed.
class ConversationTurn {
public:
    static constexpr std::size_t keptEntries = 128; ///< As many as can seed a fresh conversation.

    struct Ports {
        Scheduler& scheduler;
        AudioPlayer& player;
        SessionObserver& observer;
    };

    ConversationTurn(Ports ports, SessionSettings::Replies replies, std::chrono::milliseconds patience);
    ConversationTurn(const ConversationTurn&) = delete;
    ConversationTurn& operator=(const ConversationTurn&) = delete;

    /// An answer is asked for.
    void open();
    /// The user typed, which asks for an answer.
    void userTyped(const std::string& text);
    /// A piece of what the user says.
    void userWords(const std::string& delta);
    void backendStarted();
    void backendFinished();
    void voiceSound(std::span<const std::uint8_t> pcm);
    /// A piece of what the voice says.
    void voiceWords(const std::string& delta);
    void replyWritten(const std::string& text);
    /// The user was told of a problem, which is an answer too.
    void problemShown();
    /// Something else happened, so patience begins anew.
    void noteActivity();
    /// The connection is gone, and with it what an open turn was waiting for.
    void breakOff();
    /// The user ends the conversation; an open turn is forgotten without an outcome.
    void end();

    bool isOpen() const { return m_tracker.isOpen; }
    /// Oldest first.
    const std::deque<LiveHistoryEntry>& conversation() const { return m_conversation; }

private:
    bool isShown() const { return m_replies == SessionSettings::Replies::shown; }
    void noteAnswer();
    void scheduleCompletion();
    void complete();
    void losePatience();
    void close(SessionObserver::TurnOutcome outcome);
    void finishUserWords();
    void finishAssistantWords();
    void remember(const char* role, const std::string& text);

    Ports m_ports;
    SessionSettings::Replies m_replies;
    std::chrono::milliseconds m_patience;
    TurnTracker m_tracker;
    Transcript m_heard; ///< What the user says, while it arrives.
    std::string m_spoken; ///< What the voice said in this turn.
    std::string m_written; ///< What the model wrote in this turn.
    std::deque<LiveHistoryEntry> m_conversation;
    TimerHandle m_completionTimer;
    TimerHandle m_patienceTimer;
};

} // namespace quorvell
