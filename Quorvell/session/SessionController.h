// The spine of the assistant: one live conversation at a time, from the user's wish for help to its end.
#pragma once

#include "Quorvell/session/AudioCapture.h"
#include "Quorvell/session/AudioPlayer.h"
#include "Quorvell/session/ConversationTurn.h"
#include "Quorvell/session/DozeListener.h"
#include "Quorvell/session/EventLog.h"
#include "Quorvell/session/LiveConnection.h"
#include "Quorvell/session/LiveConnectionObserver.h"
#include "Quorvell/session/LiveMedium.h"
#include "Quorvell/session/MicrophoneStream.h"
#include "Quorvell/session/Scheduler.h"
#include "Quorvell/session/SessionObserver.h"
#include "Quorvell/session/SessionSettings.h"
#include "Quorvell/session/SessionUsage.h"
#include "Quorvell/session/SpeechSynthesiser.h"
#include "Quorvell/session/ToolDispatcher.h"
#include "Quorvell/session/UsageStore.h"
#include "QuorvellCore/live/history/TypedMessage.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Main thread. All its ports are borrowed and must outlive it.
class SessionController {
public:
    using MakeLiveConnection = std::function<std::unique_ptr<LiveConnection>(LiveConnectionObserver&, LiveMedium)>;

    struct Ports {
        Scheduler& scheduler;
        MakeLiveConnection connections;
        AudioPlayer& player;
        EventLog& log;
        SessionObserver& observer;
        const ToolDispatcher& tools;
        std::function<std::string()> whereAndWhen; ///< Date, time and place in words, as they are at this moment.
        // Each may be absent.
        AudioCapture* capture = nullptr; ///< Absent: sound comes from elsewhere, or never.
        DozeListener* dozeListener = nullptr; ///< Absent: a quiet conversation stays connected.
        SpeechSynthesiser* synthesiser = nullptr;
        UsageStore* usageStore = nullptr; ///< Absent: there is no daily limit.
        std::function<double()> jitter{}; ///< 0 to 1, different each time: spreads attempts to connect again.
        std::function<std::string()> frontApp{}; ///< What the user looks at now; else SessionSettings::frontApp.
    };

    SessionController(Ports ports, SessionSettings settings);
    ~SessionController();
    SessionController(const SessionController&) = delete;
    SessionController& operator=(const SessionController&) = delete;

    /// The user asks for help. Nothing when a conversation runs or is about to.
    void begin();
    /// A message of the app for the model; sent once the conversation is active.
    void send(LiveMessageText message);
    /// Asks the model to answer now.
    void respond();
    /// A message of the user. Where no conversation runs it begins one, where it rests it wakes it.
    void submitTyped(const TypedMessage& message, QuorvellPrompt::Entry entry = QuorvellPrompt::Entry::typed);
    /// Sound of the microphone: 16-bit little-endian mono at MicrophoneStream::sampleRateHz, in pieces of any size.
    void microphoneCaptured(std::span<const std::uint8_t> pcm);
    /// Muted, the microphone is closed and nothing is sent. Holds over conversations.
    enum class Muting { heard, muted };
    void setMuted(Muting muting);
    /// The key of SessionSettings::Listening::pushToTalk. Where no conversation runs, pressing begins one.
    enum class Key { pressed, released };
    void pushToTalk(Key key);
    /// Silences the assistant and stops what it is doing; the conversation goes on.
    void interrupt();
    /// The user's own wish; the model is told.
    void setHelpMode(HelpMode mode);
    /// Ends the conversation; the observer hears of the end once the connection is closed.
    void stop(std::string_view reason);

    /// Carries out one tool call; `reply` is answered exactly once, now or later.
    void runTool(const LiveFunctionCall& call, ToolReply reply);

    SessionPhase phase() const { return m_connection.phase; }
    bool isTurnOpen() const { return m_turn.isOpen(); }
    HelpMode helpMode() const { return m_settings.helpMode; }
    bool isMuted() const { return m_listening.muting == Muting::muted; }
    const SessionUsage& usage() const { return m_usage; }
    /// What was said on both sides, oldest first.
    const std::deque<LiveHistoryEntry>& conversation() const { return m_turn.conversation(); }

private:
    static constexpr std::size_t rememberedCalls = 256; ///< Against a call that is reported twice.

    class Line;

    struct ConnectionState {
        SessionPhase phase = SessionPhase::idle;
        std::unique_ptr<Line> live;
        std::vector<std::unique_ptr<Line>> retired; ///< Closing, or closed and not yet taken away.
        std::uint64_t serial = 0; ///< Of the live connection; tells late answers to an earlier one apart.
        std::string sessionID;
        SessionTime start{};
        std::vector<LiveMessageText> waiting; ///< Until the conversation is active.
        std::vector<std::string> waitingTyped; ///< The user's words among them.
        TimerHandle cleanUp;
    };
    struct ListeningState {
        MicrophoneStream microphone;
        Muting muting = Muting::heard;
    };
    struct ActionState {
        std::deque<std::string> calls; ///< Ids, newest last.
    };

    // The story of a beginning
    void start();
    std::unique_ptr<Line> makeConnection();
    void connect();
    void beginConversation(const std::string& sessionID);
    void greet();
    std::string frontApp() const;

    // What the service reports
    void handleEvent(const LiveServerEvent& event);
    void handleToolCalls(const std::vector<LiveFunctionCall>& calls);
    void handleServerError(const live_event::ServerError& error);
    void handleClose(const LiveClosure& closure);
    void handleRetiredClose(const Line& line);

    void deliver(const LiveMessageText& message);
    bool isRepeated(const LiveFunctionCall& call);
    ToolReply replyTo(const LiveFunctionCall& call);
    void answerTool(const LiveFunctionResponse& response, std::uint64_t askerSerial);
    void setPhase(SessionPhase phase);
    /// Takes the live connection out of use; what it still reports is only its end.
    Line& retireConnection(std::string reason);
    void takeAwayClosedLines();

    Ports m_ports;
    SessionSettings m_settings;
    ConnectionState m_connection;
    SessionUsage m_usage;
    ListeningState m_listening;
    ConversationTurn m_turn;
    ActionState m_actions;
    /// Tool owners may answer when the controller is long gone; their replies look here first.
    std::shared_ptr<SessionController*> m_self;
};

} // namespace quorvell
