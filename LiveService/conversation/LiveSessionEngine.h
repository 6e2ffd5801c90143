// SPDX-License-Identifier: MIT
// One live session as a state machine. Pure: client messages, what was heard, thought and voiced, and times go in;
// effects come out.
#pragma once

#include "LiveService/conversation/BackendRun.h"
#include "LiveService/conversation/ConversationHistory.h"
#include "LiveService/conversation/EngineEffect.h"
#include "LiveService/conversation/HeardTurn.h"
#include "LiveService/conversation/IdSource.h"
#include "LiveService/conversation/OfferedTools.h"
#include "LiveService/turns/TurnDetector.h"
#include "LiveService/voice/ReplyPacer.h"
#include "LiveService/voice/VoicePiece.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientMessage.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Times come from one clock that only moves forward. Not thread safe; lives on the thread of its connection.
class LiveSessionEngine {
public:
    using Time = std::chrono::milliseconds;

    static constexpr Time startPatience{10'000}; ///< For the first message after the connection was made.
    static constexpr int mostErrorsInARow = 20;
    static constexpr std::size_t mostTurnsUnrecognised = 8; ///< Of sound, 30 s each at most; then the session ends.
    static constexpr std::size_t longestUnsaid = 64 * 1024; ///< Bytes of replies that wait for the voice, or sound.
    static constexpr Time shortestSpeech{300}; ///< A shorter sound without words is no turn and gets no answer.

    /// What one conversation passes on to the session that takes it up.
    struct State {
        ConversationHistory history;
        RequestMemory memory;
        std::int64_t totalWords = 0;
    };

    /// `spokenRateHz` is the rate of the replies where it is not the one that the client declares for its own sound.
    LiveSessionEngine(IdSource ids, Time now, std::optional<int> spokenRateHz = std::nullopt);
    LiveSessionEngine(const LiveSessionEngine&) = delete;
    LiveSessionEngine& operator=(const LiveSessionEngine&) = delete;

    /// Before the session starts: what the rules do not understand goes to the user's own model.
    void useModel(ModelSurroundings model) { m_model = std::move(model); }

    EngineEffects receive(const OpenAILiveClientMessage& message, Time now);
    /// The client's sound pauses: the user's turn is over, however short the quiet was.
    EngineEffects soundPaused();
    /// Nothing where no words were heard so far.
    EngineEffects judged(int pause, std::optional<UtteranceShape> shape);
    EngineEffects heard(const HeardTurn& turn, Time now);
    EngineEffects thought(RuleStep step, Time now);
    EngineEffects voiced(VoicePiece piece, Time now);
    /// What came from the model's server, a piece at a time, and how that ended.
    EngineEffects modelSent(std::string_view bytes, Time now);
    EngineEffects modelEnded(ModelEnd end, Time now);
    /// To be called at nextTick.
    EngineEffects tick(Time now);
    std::optional<Time> nextTick() const;
    /// The service ends the session. Nothing happens when it is over already.
    EngineEffects end(std::string_view reason, int closeCode);

    /// Before the session starts: it goes on from an earlier one.
    void resume(State state) { m_resumed = std::move(state); }
    /// Earlier turns, which are not answered. Nothing happens before the session has started.
    void remember(const std::vector<LiveHistoryEntry>& turns);
    /// Once started: what a later session needs to go on from here.
    State state() const;
    bool isOpen() const { return m_phase == Phase::open; }

    const std::string& sessionID() const { return m_sessionID; }
    /// That the session offered.
    const OfferedTools& tools() const { return m_tools; }

private:
    enum class Phase { waiting, open, closed };

    void take(const openai_client::SessionStart& message, Time now);
    void take(const openai_client::InputAudio& message, Time now);
    void take(const openai_client::Append& message, Time now);
    void take(const openai_client::UserMessage& message, Time now);
    void take(const openai_client::FunctionOutput& message, Time now);
    void take(const openai_client::ResponseCreate& message, Time now);
    void take(const openai_client::Close& message, Time now);
    void take(const openai_client::Malformed& message, Time now);

    void open(const OpenAILiveSetupOptions& options);
    void takeRequest(const std::string& words, const HeardDoubts& doubts, Time now);
    void carryOut(BackendOutputs outputs);
    void stopModel();
    void tickModel(Time now);
    void endReplyOfModel(Time now);
    void takeTurnEvents(std::vector<TurnEvent> events);
    void say(const BackendReply& reply);
    void breakOff();
    void sendDue(Time now);
    void finishSaying();
    void tellUsage();
    void tellEndOfTurn();
    void refuse(std::string_view code, std::string_view reason, const std::optional<std::string>& eventID);
    void countError();
    void close(std::string_view reason, int code);
    void tell(SessionNews news);
    EngineEffects taken();

    IdSource m_ids;
    std::string m_sessionID;
    Phase m_phase = Phase::waiting;
    Time m_startDeadline;
    int m_errorsInARow = 0;
    OfferedTools m_tools;
    int m_heardRate = 24000;
    std::optional<int> m_spokenRate;
    std::optional<State> m_resumed;
    std::int64_t m_wordsBefore = 0; ///< Of the sessions that this one goes on from.
    ConversationHistory m_history;
    std::optional<ModelSurroundings> m_model;
    std::optional<BackendRun> m_backend; ///< From session.start on, as the next two.
    std::optional<TurnDetector> m_turns;
    std::optional<ReplyPacer> m_pacer;
    std::deque<Time> m_speech; ///< How long each turn that is being recognised was loud.
    std::size_t m_samplesHeard = 0;
    int m_lastReply = 0;
    int m_firstWantedReply = 1; ///< Pieces of earlier ones were broken off.
    bool m_isVoicing = false;
    std::size_t m_unsaid = 0; ///< Bytes of the replies since the voice was last done.
    std::string m_saying; ///< What was handed out of the reply so far: only that was said.
    bool m_isTurnOpen = false; ///< Something is being answered, and its end was not told yet.
    bool m_isGeneratedTold = false;
    EngineEffects m_effects; ///< Of the call that is running.
};

} // namespace quorvell
