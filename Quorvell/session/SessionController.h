// SPDX-License-Identifier: MIT
// The spine of the assistant: one live conversation at a time, from the user's wish for help to its end.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/SessionReport.h"
#include "Quorvell/session/briefing/Briefing.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/connection/LinePreparation.h"
#include "Quorvell/session/consent/SpeechRecord.h"
#include "Quorvell/session/events/ServiceEvents.h"
#include "Quorvell/session/hearing/Ear.h"
#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/outbox/ToolAnswers.h"
#include "Quorvell/session/own/OwnWords.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"
#include "Quorvell/session/ports/LiveMedium.h"
#include "Quorvell/session/ports/SpeechSynthesiser.h"
#include "Quorvell/session/ports/UsageStore.h"
#include "Quorvell/session/queue/ReportQueue.h"
#include "Quorvell/session/queue/WrappingScheduler.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/reports/SessionUsage.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/rest/QuietSurvey.h"
#include "Quorvell/session/rest/RestCycle.h"
#include "Quorvell/session/rest/Resting.h"
#include "Quorvell/session/settings/SessionSettings.h"
#include "Quorvell/session/tools/HelpModeKeeper.h"
#include "Quorvell/session/tools/ToolDesk.h"
#include "Quorvell/session/tools/ToolDispatcher.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/usage/TalkMeter.h"
#include "QuorvellCore/live/history/TypedMessage.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

/// What its parts find out comes to it as values, one after the other (ReportQueue), never while it is doing something
/// else. Main thread. All its ports are borrowed and must outlive it.
class SessionController {
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
        ActionWatch* watch = &ActionWatch::nobody(); ///< Several are an ActionWatchGroup.
    };

    SessionController(Ports ports, SessionSettings settings);
    ~SessionController();
    SessionController(const SessionController&) = delete;
    SessionController& operator=(const SessionController&) = delete;

    /// The user asks for help. Where a conversation rests it wakes it; nothing when one runs or is about to.
    void begin();
    /// A message of the app for the model. Sent once the conversation is connected; wakes one that rests.
    void send(const LiveMessageText& message);
    /// Something that the program has to tell the user by itself, in one sentence. The model tells it at the next quiet
    /// moment, waking up where it rests; where there is no model to tell it, it is shown and said on the device.
    void announce(std::string sentence);
    /// A question that only the user's own answer settles, word for word: shown and said on the device. Nothing while a
    /// turn is open, or where replies are spoken and nothing here can speak.
    void putQuestion(const std::string& question);
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
    using Consent = QuietWatch::Consent;
    void noteConsent(Consent consent);
    /// When the last that the user was told has sounded, or will have; what is shown is told at once.
    SessionTime saidUntil() const { return m_speech.voiceUntil(m_timers.now()); }
    /// The microphone heard something of which not all words have come yet.
    bool areWordsAwaited() const;
    /// Ends the conversation; the observer hears of the end once the connection is closed.
    void stop(std::string_view reason);

    /// Carries out one tool call; `reply` is answered exactly once, now or later.
    void runTool(const LiveFunctionCall& call, ToolReply reply);

    SessionPhase phase() const { return m_phase; }
    Doze doze() const { return m_resting.state(); }
    bool isTurnOpen() const { return m_turn.isOpen(); }
    HelpMode helpMode() const { return m_modes.mode(); }
    bool isMuted() const { return m_listening.ear().isMuted(); }
    const SessionUsage& usage() const { return m_meter.usage(); }
    /// What was said on both sides, oldest first.
    const std::deque<LiveHistoryEntry>& conversation() const { return m_turn.conversation().entries(); }
    ToolDesk& tools() { return m_desk; }

private:
    // The story of a conversation
    void start(std::vector<std::string> unsent);
    void beginConversation(const std::string& sessionID);
    void greet();
    void mend();
    enum class LastRequest { inDoubt, untouched }; ///< Whether an open one may have been carried out, or half.
    void endWith(SessionEnd end, LastRequest request = LastRequest::inDoubt);
    void goIdle();
    void setPhase(SessionPhase phase);

    // Silence
    void checkIdle();
    void meterTalk();
    void stopWhenDayIsUsedUp();
    void restOrStopIfQuiet();
    void dozeIfQuiet();
    void wakingTookTooLong();

    // What the parts report
    template <typename... Reports> void take(std::variant<Reports...>& report)
    {
        std::visit([this](auto& fact) { take(fact); }, report);
    }
    void take(const ConnectionFact& fact) { m_lines.take(fact, m_turn.conversation().settledMark()); }
    void take(const line_report::Ready& ready);
    void take(const line_report::Event& fact) { m_events.handle(fact.event); }
    void take(const line_report::Written& reply) { m_events.replyWritten(reply.text); }
    void take(const line_report::Grew& reply) { m_events.replyGrew(reply.delta); }
    void take(const line_report::UnusedBilled& bill) { m_meter.billedBeside(bill.seconds); }
    void take(const line_report::OpeningDue&) { m_lines.openDue(m_briefing.write()); }
    void take(const line_report::StandbyDue&) { m_lines.openStandby(m_briefing.write()); }
    void take(const line_report::Delayed&);
    void take(const line_report::Lost&);
    void take(const line_report::GivenUp& fact);
    void take(const line_report::Ended& fact);
    void take(const rest_report::Onset&) { m_rest.onset(); }
    void take(const rest_report::Heard& fact) { m_rest.heard(fact.words); }
    void take(const rest_report::Failed& fact) { m_rest.failed(fact.sentence); }
    void take(const rest_report::WakingTookTooLong&) { wakingTookTooLong(); }
    void take(const tool_report::Answered& answer);
    void take(tool_report::HelpModeAsked& asked) { m_modes.ask(std::move(asked), m_listening.spokenWords()); }
    void take(tool_report::HelpModeDue& due) { m_modes.judge(std::move(due)); }
    void take(const tool_report::TakesLong&);
    void take(const turn_report::Closed& turn);
    void take(const turn_report::RequestLeft&) { m_listening.followThrough(); }
    void take(const turn_report::GivenUp&);
    void take(const turn_report::StopSaid&);
    void take(const listening_report::SpeechCut& cut) { m_listening.speechCut(cut.ending); }
    void take(const listening_report::RequestMissed&) { m_handover.tellMissed(); }

    std::string frontApp() const;

    Ports m_ports;
    SessionSettings m_settings;
    ReportQueue<SessionReport> m_reports;
    WrappingScheduler m_timers; ///< All of the session's run inside a call of it.
    SessionPhase m_phase = SessionPhase::idle;
    SessionTime m_sessionStart{};
    bool m_isLossTold = false; ///< To the observer, which is to hear of the end of it.
    UserNotices m_notices;
    TalkMeter m_meter;
    SpeechRecord m_speech;
    ConversationTurn m_turn;
    ConnectionKeeper m_lines;
    LinePreparation m_preparation;
    Resting m_resting;
    QuietWatch m_quiet;
    Listening m_listening;
    ToolDesk m_desk;
    HelpModeKeeper m_modes; ///< After the desk, which hears of the end of what it holds.
    Outbox m_outbox;
    Handover m_handover;
    ToolAnswers m_answers;
    ServiceEvents m_events;
    Briefing m_briefing;
    OwnWords m_own;
    QuietSurvey m_survey;
    RestCycle m_rest;
    TimerHandle m_farewell;
};

} // namespace quorvell
