// SPDX-License-Identifier: MIT
// What is said on both sides, turn by turn: gathers the words, plays the voice, cuts it when the user speaks over it,
// sees when a turn is over, tells the observer, and remembers the conversation.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/consent/SpeechRecord.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/reports/ThoughtSummary.h"
#include "Quorvell/session/settings/SessionSettings.h"
#include "Quorvell/session/turn/ConversationMemory.h"
#include "Quorvell/session/turn/SpokenReply.h"
#include "Quorvell/session/turn/StopWords.h"
#include "Quorvell/session/turn/TurnReport.h"
#include "Quorvell/session/turn/TurnTracker.h"
#include "QuorvellCore/live/history/RecentRequests.h"
#include "QuorvellCore/live/history/Transcript.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quorvell {

/// Main thread; its ports are borrowed.
class ConversationTurn {
public:
    struct Ports {
        Scheduler& scheduler;
        AudioPlayer& player;
        SessionAudience& observer;
        SpeechRecord& speech;
        std::function<void(TurnReport)> report;
        ActionWatch& watch = ActionWatch::nobody();
    };

    ConversationTurn(Ports ports, SessionSettings::Replies replies, std::chrono::milliseconds patience);
    ConversationTurn(const ConversationTurn&) = delete;
    ConversationTurn& operator=(const ConversationTurn&) = delete;

    // What one turn may hold; a service that says more is not listened to until the next one begins.
    static constexpr std::size_t longestHeard = 64 * 1024; ///< Bytes of what the user says: over an hour of speech.
    static constexpr std::size_t longestReply = 256 * 1024; ///< Bytes that the voice says, and again that are written.
    static constexpr std::chrono::minutes mostUnplayed{10}; ///< Of the voice: 29 MB at the loudspeaker.

    /// An answer is asked for.
    void open();
    /// The user typed, which asks for an answer. `ownWords` is `text` without what was pasted.
    void userTyped(const std::string& text, const std::string& ownWords);
    /// The recogniser on the device understood the user, while nobody else listened.
    void userOverheard(const std::string& text);
    /// The user begins to speak.
    void userBegan()
    {
        m_hasSpokenSinceAct = true;
        ++m_requests;
    }
    /// A piece of what the user says.
    void userWords(const std::string& delta);
    /// A piece of what the user said before the model began to act on it: it asks for nothing more.
    void lateUserWords(const std::string& delta);
    /// Words are coming in that are not complete.
    bool isHearingWords() const { return !m_heard.isEmpty(); }
    bool areWordsLate() const { return m_isHeardLate; }
    /// What the user has said so far is complete.
    void finishUserWords();
    /// What the user has said so far will be heard once more.
    void forgetUserWords();
    void backendStarted();
    void backendFinished();
    /// Sound of the assistant's voice: 16-bit little-endian mono at MicrophoneStream::sampleRateHz.
    void voiceSound(std::span<const std::uint8_t> pcm);
    /// A piece of what the voice says.
    void voiceWords(const std::string& delta);
    void replyWritten(const std::string& text);
    void replyGrew(const std::string& delta);
    /// A piece of what the model thinks about the turn; empty for a break.
    void thinking(const std::string& delta);
    /// The service itself declares the turn complete.
    void serviceFinished();
    /// The user was told of a problem, which is an answer too.
    void problemShown();
    /// What the user said that the model acts on.
    enum class Act { onLatest, onEarlier };
    /// A tool has begun; until words come again, the request counts as acted on.
    void acted(Act act);
    /// A tool's result went to the model; what is said next may be about that only.
    void resultGiven();
    /// Something else happened, so patience begins anew.
    void noteActivity();
    /// The connection is gone. Whether the open turn was not finished over it; it then waits for the next one.
    bool connectionLost();
    /// The conversation is gone, and with it what an open turn was waiting for.
    void breakOff();
    /// The user ends the conversation; an open turn is forgotten without an outcome.
    void end();

    /// Why a reply is cut short.
    enum class Cut {
        spokenOver, ///< A tool that still runs has its outcome told.
        silenced, ///< The user wants to hear no more of it.
    };
    /// Nothing more of this reply is heard, shown or remembered.
    void cutReply(Cut cut);
    /// The model knows by now that it was cut; what comes next is a new reply.
    void expectNewReply() { m_bargedIn = false; }
    bool bargedIn() const { return m_bargedIn; }

    bool isOpen() const { return m_tracker.isOpen; }
    /// The present turn, or the last one.
    SessionTime beganAt() const { return m_beganAt; }
    bool isVoiceSounding() const;
    bool isBackendWorking() const { return m_tracker.isBackendWorking; }
    /// The voice is coming in or still sounding: who speaks now speaks over it.
    bool modelGenerating() const;
    /// Since the user's last words.
    bool actedSinceWords() const { return m_actedSinceWords; }
    bool spokeSinceRequest() const { return m_spokeSinceRequest; }
    /// Grows whenever the user speaks or types; a service may tell words late or not at all, so speech counts as well.
    std::uint64_t requests() const { return m_requests; }
    /// The reply was still coming in shortly before now.
    bool isReplyArriving() const;

    const ConversationMemory& conversation() const { return m_conversation; }
    RecentRequests& recentRequests() { return m_recentRequests; }

private:
    /// A service sends a voice without longer gaps than this.
    static constexpr std::chrono::milliseconds arrivalGap{1'000};
    /// Late words of which no further piece came for so long are complete.
    static constexpr std::chrono::milliseconds lateWordsSettle{300};
    /// Nor is it silent for longer while a sentence is still being sent.
    static constexpr std::chrono::milliseconds voiceGap{150};

    void hear(const std::string& delta);
    bool isShown() const { return m_replies == SessionSettings::Replies::shown; }
    void userAsked(const std::string& text, const std::string& ownWords, SessionAudience::Words words);
    void userAskedBefore(const std::string& text);
    void noteBeginning();
    void noteAnswer();
    void scheduleCompletion();
    void complete();
    bool isRequestLeft() const;
    void losePatience();
    void close(SessionAudience::TurnOutcome outcome);
    void startNewCaption();
    void finishAssistantWords();

    Ports m_ports;
    SessionSettings::Replies m_replies;
    std::chrono::milliseconds m_patience;
    TurnTracker m_tracker;
    Transcript m_heard; ///< What the user says, while it arrives.
    bool m_isHeardLate = false; ///< It was acted on before it arrived.
    SpokenReply m_spoken; ///< What the voice said in this turn.
    std::chrono::milliseconds m_playedBefore{}; ///< Where in all sound ever played this turn's voice begins.
    std::size_t m_spokenBytes = 0; ///< Words of the voice in this turn.
    std::string m_written; ///< What the model wrote in this turn.
    ThoughtSummary m_thoughtSummary; ///< Of this turn, or of the last one.
    bool m_bargedIn = false;
    bool m_actedSinceWords = false;
    bool m_spokeSinceRequest = false;
    bool m_hasSpokenSinceAct = false; ///< The user, since a tool began last.
    bool m_isResultToTell = false; ///< Of a tool that was called before the user spoke last.
    std::uint64_t m_requests = 0;
    SessionTime m_beganAt{};
    SessionTime m_lastOutput{};
    ConversationMemory m_conversation;
    RecentRequests m_recentRequests;
    StopWords m_stopWords;
    TimerHandle m_lateWordsTimer;
    TimerHandle m_completionTimer;
    TimerHandle m_patienceTimer;
};

} // namespace quorvell
