// SPDX-License-Identifier: MIT
// The spine of the assistant: one live conversation at a time, from the user's wish for help to its end.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/connection/LinePreparation.h"
#include "Quorvell/session/hearing/Ear.h"
#include "Quorvell/session/hearing/HeldSpeech.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"
#include "Quorvell/session/ports/LiveMedium.h"
#include "Quorvell/session/ports/SpeechSynthesiser.h"
#include "Quorvell/session/ports/UsageStore.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/reports/SessionUsage.h"
#include "Quorvell/session/rest/IdleRules.h"
#include "Quorvell/session/rest/Resting.h"
#include "Quorvell/session/settings/SessionSettings.h"
#include "Quorvell/session/tools/HeldModeCalls.h"
#include "Quorvell/session/tools/ToolDesk.h"
#include "Quorvell/session/tools/ToolDispatcher.h"
#include "Quorvell/session/turn/Announcements.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/turn/SessionEvents.h"
#include "Quorvell/session/turn/WordlessSpeech.h"
#include "Quorvell/session/usage/TalkMeter.h"
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
class SessionController : private ConnectionKeeper::Owner, private Resting::Owner, private ToolDesk::Owner {
public:
    using MakeLiveConnection = std::function<std::unique_ptr<LiveConnection>(LiveConnectionObserver&, LiveMedium)>;
    using Muting = Ear::Muting;

    struct Ports {
        Scheduler& scheduler;
        MakeLiveConnection connections;
        AudioPlayer& player;
        EventLog& log;
        SessionAudience& observer;
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
    ~SessionController() override;
    SessionController(const SessionController&) = delete;
    SessionController& operator=(const SessionController&) = delete;

    /// The user asks for help. Where a conversation rests it wakes it; nothing when one runs or is about to.
    void begin();
    /// A message of the app for the model. Sent once the conversation is connected; wakes one that rests.
    void send(LiveMessageText message);
    /// Something that the program has to tell the user by itself, in one sentence. The model tells it at the next quiet
    /// moment, waking up where it rests; where there is no model to tell it, it is shown and said on the device.
    void announce(std::string sentence);
    /// Asks the model to answer now.
    void respond();
    /// A message of the user. Where no conversation runs it begins one, where it rests it wakes it.
    void submitTyped(const TypedMessage& message, QuorvellPrompt::Entry entry = QuorvellPrompt::Entry::typed);
    /// Sound of the microphone: 16-bit little-endian mono at MicrophoneStream::sampleRateHz, in pieces of any size.
    void microphoneCaptured(std::span<const std::uint8_t> pcm);
    /// Muted, the microphone is closed and nothing is sent. Holds over conversations.
    void setMuted(Muting muting);
    /// The key of SessionSettings::Listening::pushToTalk. Where no conversation runs, pressing begins one.
    enum class Key { pressed, released };
    void pushToTalk(Key key);
    /// Silences the assistant and stops the action that runs; the conversation goes on.
    void interrupt();
    /// The user's own wish; the model is told.
    void setHelpMode(HelpMode mode);
    /// Something on screen is highlighted for the user until `clearTarget`, or until `isStillThere` denies it. While it
    /// is, the conversation does not rest and ends later.
    void showTarget(std::string currentTarget, std::function<bool()> isStillThere);
    void clearTarget();
    /// An action waits for the user's spoken yes; meanwhile the conversation does not rest.
    enum class Consent { pending, settled };
    void noteConsent(Consent consent);
    /// Ends the conversation; the observer hears of the end once the connection is closed.
    void stop(std::string_view reason);

    /// Carries out one tool call; `reply` is answered exactly once, now or later.
    void runTool(const LiveFunctionCall& call, ToolReply reply);

    SessionPhase phase() const { return m_connection.phase; }
    Doze doze() const { return m_resting.state(); }
    bool isTurnOpen() const { return m_turn.isOpen(); }
    HelpMode helpMode() const { return m_settings.helpMode; }
    bool isMuted() const { return m_listening.ear.isMuted(); }
    const SessionUsage& usage() const { return m_meter.usage(); }
    /// What was said on both sides, oldest first.
    const std::deque<LiveHistoryEntry>& conversation() const { return m_turn.conversation().entries(); }
    const ConnectionKeeper& lines() const { return m_lines; }
    ToolDesk& tools() { return m_desk; }

private:
    static constexpr std::size_t mostWaiting = 64; ///< Messages for a connection that is not there yet.
    /// After the user's speech, for the service to notice that it was spoken over.
    static constexpr std::chrono::milliseconds bargeInNotice{2'000};

    struct EventHandler;
    struct ConnectionState {
        SessionPhase phase = SessionPhase::idle;
        std::string sessionID;
        SessionTime sessionStart{};
        std::uint64_t firstSerial = 0; ///< Of this conversation's lines; earlier ones belong to the one before.
        std::vector<LiveMessageText> waiting; ///< Until there is a line that is ready.
        std::vector<LiveMessageText> unanswered; ///< Of the app, sent in the turn that is open.
        std::vector<std::string> waitingTyped; ///< The user's words among them.
        bool isLossTold = false; ///< To the observer, which is to hear of the end of it.
        std::string lostRequests; ///< Of the turn that a lost line was at.
        std::string lostReplies; ///< What the user had heard in answer to them.
        /// The open turn ran over an earlier line and was finished there; the present one is told once it is settled.
        std::optional<ConversationMemory::Mark> untoldSince{};
        TimerHandle farewell{};
    };
    struct ListeningState {
        Ear ear;
        HeldSpeech heldChunks{};
        bool haveWordsCome = false; ///< Of the speech that began last.
        SessionTime lastWords{}; ///< When the last piece of words came.
        WordlessSpeech wordless{};
        SessionTime lastActivity{};
        SessionTime lastSpeech{}; ///< When the last chunk of the user's speech came.
        SessionTime lastCheck{};
        TimerHandle idleCheckTimer{};
        TimerHandle bargeInTimer{};
        TimerHandle followThroughTimer{};
    };
    struct ActionState {
        bool isConsentPending = false;
        std::string currentTarget; ///< Empty: nothing is highlighted.
        std::function<bool()> isTargetThere;
        TimerHandle targetRefreshTimer{};
    };

    // The story of a conversation
    void start(std::vector<std::string> unsent);
    void beginConversation(const std::string& sessionID);
    void greet();
    void finishWaking();
    void mend();
    void tellTurnsSince(ConversationMemory::Mark known);
    void announceIfQuiet();
    void announceOnDevice();
    enum class LastRequest { inDoubt, untouched }; ///< Whether an open one may have been carried out, or half.
    void endWith(SessionEnd end, LastRequest request = LastRequest::inDoubt);
    void goIdle();

    // Silence and sound
    void startIdleCheck();
    void checkIdle();
    void restOrStopIfQuiet();
    void dozeIfQuiet();
    IdleRules idleRules() const;
    void meterTalk();
    void stopWhenDayIsUsedUp();
    std::string dayUsedUpSentence() const;
    void noteActivity();
    void hear(const MicrophoneStream::Step& step);
    void handleSpeechOnset();
    void speechCut(const std::vector<MicGateOutput>& ending);
    void speechEnded();
    void flushHeldChunks();
    void forgetHeldNoise();
    void wordsCame(const std::string& words);
    HeldModeCalls::Words spokenWords() const;
    void modelReacted();
    ConversationTurn::Act modelActed();
    void voiceReacted();
    void awaitFollowThrough();
    void followThrough();
    void targetRefresh();

    // What lines report: ConnectionKeeper::Owner
    LiveSetup liveSetup(const std::optional<std::string>& resumptionHandle) override;
    ConversationMemory::Mark settledMark() const override { return m_turn.conversation().settledMark(); }
    bool isQuiet() const override;
    void lineBecameReady(const ConnectionKeeper::Ready& ready) override;
    void lineReported(const LiveServerEvent& event) override;
    void unusedLineBilled(double seconds) override { m_meter.billedBeside(seconds); }
    void lineWrote(const std::string& text) override;
    void lineReplyGrew(const std::string& delta) override;
    void lineDelayed() override;
    void lineLost(const LiveClosure& closure) override;
    void linesGivenUp(const LiveClosure& closure) override;
    void lineEnded(const std::string& reason) override;
    void handleVoice(const live_event::Audio& sound);
    void handleInterrupted();
    void handleServerError(const live_event::ServerError& error);

    // Rest: Resting::Owner
    void dozeChanged(Doze doze) override;
    void wakingBegan() override;
    void onsetAtRest() override;
    void wordsHeardAtRest(const std::string& words) override;
    void restFailed(const std::string& sentence) override;
    void wakingTookTooLong() override;

    // Tools: ToolDesk::Owner
    void toolAnswered(const ToolDesk::Answer& answer) override;
    void helpModeAsked(const LiveFunctionCall& call, ToolReply reply) override;
    void judgeHelpMode(const LiveFunctionCall& call, ToolReply reply);
    void toolTakesLong() override;

    void deliver(const LiveMessageText& message);
    void await(LiveMessageText message);
    void tell(const std::string& event, LiveMessageText::Answer answer);
    void switchHelpMode(HelpMode mode);
    void turnClosed();
    void turnGivenUp();
    void tellProblem(const std::string& sentence);
    std::string frontApp() const;
    void setPhase(SessionPhase phase);

    Ports m_ports;
    SessionSettings m_settings;
    ConnectionState m_connection;
    TalkMeter m_meter;
    ConversationTurn m_turn;
    ConnectionKeeper m_lines;
    LinePreparation m_preparation;
    Resting m_resting;
    ListeningState m_listening;
    Announcements m_announcements;
    ToolDesk m_desk;
    HeldModeCalls m_heldModes; ///< After the desk, which hears of their end.
    ActionState m_actions;
};

} // namespace quorvell
