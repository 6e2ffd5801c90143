// SPDX-License-Identifier: MIT
#include "Quorvell/session/SessionController.h"

#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <utility>

// The story of a conversation and what the user and the program want of it. Silence and sound are in
// SessionListening.cpp, what connections, rest and tools report in SessionReports.cpp.

namespace quorvell {

SessionController::SessionController(Ports ports, SessionSettings settings)
    : m_ports(std::move(ports))
    , m_settings(std::move(settings))
    , m_meter(m_ports.usageStore, m_settings.dailyMinutes)
    , m_turn({m_ports.scheduler, m_ports.player, m_ports.observer, [this] { followThrough(); },
                 [this] { turnClosed(); }, [this] { turnGivenUp(); }},
          m_settings.replies, m_settings.patience)
    , m_lines({m_ports.scheduler, m_ports.log,
                  [this](LiveConnectionObserver& line) { return m_ports.connections(line, m_settings.medium); },
                  m_ports.jitter, *this},
          m_settings.limits)
    , m_preparation({m_ports.scheduler, m_lines, m_ports.log, m_meter}, m_settings.limits)
    , m_resting(m_ports.scheduler, m_ports.dozeListener, *this, m_settings.limits)
    , m_listening{.ear{{m_ports.scheduler, m_ports.capture, m_ports.observer,
                           [this](const std::vector<MicGateOutput>& ending) { speechCut(ending); }},
          m_settings.listening}}
    , m_desk({m_ports.scheduler, m_ports.tools, m_ports.log, m_ports.observer, *this}, m_settings.limits)
    , m_heldModes(m_ports.scheduler,
          [this](const LiveFunctionCall& call, ToolReply reply) { judgeHelpMode(call, std::move(reply)); })
{
}

SessionController::~SessionController()
{
    // They outlive the session and would report to it.
    if (m_ports.dozeListener)
        m_ports.dozeListener->stop();
    if (m_ports.capture && m_ports.capture->isOpen())
        m_ports.capture->close();
}

// ---- The story of a beginning

void SessionController::begin()
{
    if (m_connection.phase == SessionPhase::idle)
        start({});
    else
        m_resting.wake();
}

void SessionController::start(std::vector<std::string> unsent)
{
    m_meter.begin();
    if (m_settings.medium == LiveMedium::voice && m_meter.isDayUsedUp()) {
        SessionEnd end;
        end.reason = "daily limit reached";
        end.isFailure = true;
        end.mustUserAct = true;
        end.sentence = dayUsedUpSentence();
        end.unsent = std::move(unsent);
        return m_ports.observer.conversationEnded(end);
    }
    m_connection.sessionStart = m_ports.scheduler.now();
    m_connection.sessionID.clear();
    m_connection.firstSerial = m_lines.serial() + 1;
    m_resting.begin();
    m_desk.begin();
    m_listening.heldChunks.forget();
    m_listening.wordless.forget();
    setPhase(SessionPhase::connecting);
    m_listening.ear.openForConversation();
    m_lines.open(ConnectionKeeper::Arrival::first);
}

LiveSetup SessionController::liveSetup(const std::optional<std::string>& resumptionHandle)
{
    PromptOptions options;
    options.userName = m_settings.userName;
    options.familyName = m_settings.familyName;
    options.startMode = m_settings.helpMode;
    if (m_ports.whereAndWhen)
        options.whereAndWhen = m_ports.whereAndWhen();
    LiveSetup setup;
    setup.voiceInstructions = QuorvellPrompt::systemInstruction(options);
    setup.toolInstructions = m_settings.medium == LiveMedium::text ? QuorvellPrompt::textBackendInstructions(options)
                                                                   : QuorvellPrompt::liveBackendInstructions(options);
    options.toolHolder = PromptOptions::ToolHolder::voice;
    setup.soleInstructions = QuorvellPrompt::systemInstruction(options);
    setup.tools = m_ports.tools.offeredTools();
    setup.resumptionHandle = resumptionHandle;
    if (!resumptionHandle)
        setup.history = m_turn.conversation().settled();
    return setup;
}

void SessionController::beginConversation(const std::string& sessionID)
{
    m_ports.log.record("session_started",
        {{"id", sessionID}, {"after_ms", (m_ports.scheduler.now() - m_connection.sessionStart).count()}});
    noteActivity();
    setPhase(SessionPhase::active);
    startIdleCheck();
    const bool isAskedAlready = !m_connection.waiting.empty() || !m_listening.heldChunks.isEmpty();
    if (!isAskedAlready && m_settings.greeting == SessionSettings::Greeting::spoken)
        greet();
}

void SessionController::greet()
{
    // Where answers are shown, the model that writes them greets; else the voice does.
    if (m_settings.replies == SessionSettings::Replies::shown)
        return deliver({.text = QuorvellPrompt::greetingEvent(m_settings.userName, frontApp())});
    m_turn.open();
    m_lines.ready()->sendVoiceInstructions(QuorvellPrompt::liveGreeting(m_settings.userName, frontApp()));
}

std::string SessionController::frontApp() const
{
    const std::string app = m_ports.frontApp ? m_ports.frontApp() : m_settings.frontApp;
    return app.empty() ? "their desktop" : app;
}

// ---- What the user and the program want

void SessionController::send(LiveMessageText message)
{
    if (m_connection.phase == SessionPhase::idle)
        return;
    m_resting.wake();
    if (m_lines.ready()) {
        if (message.answer == LiveMessageText::Answer::wanted && m_connection.unanswered.size() < mostWaiting)
            m_connection.unanswered.push_back(message);
        deliver(message);
    } else if (message.lateness == LiveMessageText::Lateness::stillUseful) {
        await(std::move(message));
    }
}

void SessionController::await(LiveMessageText message)
{
    if (m_connection.waiting.size() >= mostWaiting)
        return tellProblem("There is no connection yet, and too much waits for it already. Try again in a moment.");
    m_connection.waiting.push_back(std::move(message));
}

void SessionController::announce(std::string sentence)
{
    m_announcements.add(std::move(sentence), m_ports.scheduler.now());
    if (m_connection.phase == SessionPhase::idle)
        return announceOnDevice();
    m_resting.wake();
    announceIfQuiet();
}

void SessionController::announceIfQuiet()
{
    const bool isSpeechAround = m_turn.isVoiceSounding() || m_listening.ear.isHearingSpeech();
    const bool isMoment = isQuiet() || (m_announcements.isUrgent(m_ports.scheduler.now()) && !isSpeechAround);
    if (m_announcements.isEmpty() || !m_lines.ready() || !isMoment)
        return;
    m_ports.log.record("announced", Json::object());
    send({.text = SessionEvents::announcement(m_announcements.take())});
}

void SessionController::announceOnDevice()
{
    for (const std::string& sentence : m_announcements.take()) {
        m_ports.observer.assistantSaid(sentence);
        if (m_ports.synthesiser && m_settings.replies == SessionSettings::Replies::spoken)
            m_ports.synthesiser->say(sentence);
    }
}

void SessionController::respond()
{
    if (!m_lines.ready())
        return;
    m_turn.open();
    m_turn.backendStarted();
    m_lines.ready()->requestAnswer();
}

void SessionController::submitTyped(const TypedMessage& message, QuorvellPrompt::Entry entry)
{
    const std::string text = trimmed(message.text());
    if (text.empty())
        return;
    if (m_connection.phase == SessionPhase::idle)
        start({text});
    if (m_connection.phase == SessionPhase::idle)
        return;
    std::string ownWords;
    for (const TypedMessage::Piece& piece : message.pieces)
        if (!piece.pasted)
            ownWords += piece.text;
    noteActivity();
    m_turn.userTyped(text, ownWords);
    m_resting.wake();
    const auto reply = message.spoken ? QuorvellPrompt::Reply::spoken : QuorvellPrompt::Reply::shown;
    const LiveMessageText wrapped{.text = QuorvellPrompt::typedMessage(text, entry, reply)};
    if (m_lines.ready())
        return deliver(wrapped);
    m_connection.waitingTyped.push_back(text);
    await(wrapped);
}

void SessionController::setMuted(Muting muting)
{
    m_listening.ear.setMuted(muting);
    noteActivity();
}

void SessionController::pushToTalk(Key key)
{
    if (!m_listening.ear.isBehindKey())
        return;
    if (key == Key::released)
        return m_listening.ear.releaseKey();
    begin();
    noteActivity();
    m_listening.ear.pressKey();
}

void SessionController::interrupt()
{
    if (m_ports.synthesiser)
        m_ports.synthesiser->stop();
    m_desk.cancelAction();
    if (m_turn.isOpen() || m_turn.isVoiceSounding()) {
        m_ports.log.record("silenced", Json::object());
        m_turn.cutReply(ConversationTurn::Cut::silenced);
    }
    if (m_lines.ready())
        m_lines.ready()->dropStale();
    noteActivity();
}

void SessionController::setHelpMode(HelpMode mode)
{
    if (mode == m_settings.helpMode)
        return;
    switchHelpMode(mode);
    if (m_lines.ready()) // A connection that is still to come begins with it.
        tell(SessionEvents::helpModeSwitched(mode), LiveMessageText::Answer::notWanted);
}

void SessionController::showTarget(std::string currentTarget, std::function<bool()> isStillThere)
{
    m_actions.currentTarget = std::move(currentTarget);
    m_actions.isTargetThere = std::move(isStillThere);
    m_actions.targetRefreshTimer =
        m_ports.scheduler.every(m_settings.limits.targetRefresh, [this] { targetRefresh(); });
}

void SessionController::clearTarget()
{
    m_actions.targetRefreshTimer.cancel();
    m_actions.currentTarget.clear();
}

void SessionController::noteConsent(Consent consent)
{
    m_actions.isConsentPending = consent == Consent::pending;
    noteActivity();
}

void SessionController::runTool(const LiveFunctionCall& call, ToolReply reply)
{
    m_desk.run(call, std::move(reply), m_lines.ready() ? ToolDesk::Conversation::live : ToolDesk::Conversation::none);
}

// ---- Messages

void SessionController::deliver(const LiveMessageText& message)
{
    if (message.answer == LiveMessageText::Answer::wanted) {
        if (!m_turn.isOpen())
            m_turn.open();
        m_turn.backendStarted();
    }
    if (message.jpeg)
        m_meter.imageSent();
    m_lines.ready()->sendMessage(message);
}

void SessionController::tell(const std::string& event, LiveMessageText::Answer answer)
{
    const LiveMessageText message{.text = event, .answer = answer};
    if (m_lines.ready())
        deliver(message);
    else
        await(message);
}

void SessionController::tellProblem(const std::string& sentence)
{
    m_ports.observer.problemArose(sentence);
    if (m_ports.synthesiser && m_settings.replies == SessionSettings::Replies::spoken)
        m_ports.synthesiser->say(sentence);
}

void SessionController::switchHelpMode(HelpMode mode)
{
    m_settings.helpMode = mode;
    m_ports.log.record("mode_changed", {{"mode", std::string(nameOf(mode))}});
    m_ports.observer.helpModeChanged(mode);
}

void SessionController::turnClosed()
{
    m_connection.unanswered.clear();
    m_connection.lostRequests.clear();
    m_desk.forgetReplies();
    m_lines.noteTurnClosed(m_turn.beganAt());
    const auto untold = std::exchange(m_connection.untoldSince, std::nullopt);
    if (untold && m_lines.ready())
        tellTurnsSince(*untold);
}

// ---- The end

void SessionController::stop(std::string_view reason)
{
    if (m_connection.phase == SessionPhase::idle)
        return;
    m_turn.end();
    m_ports.player.stop();
    const bool isEndToCome = m_lines.end(std::string(reason), ConnectionKeeper::Farewell::reported);
    goIdle();
    if (!isEndToCome)
        m_connection.farewell = m_ports.scheduler.after(
            std::chrono::milliseconds::zero(), [this, reason = std::string(reason)] { lineEnded(reason); });
}

void SessionController::endWith(SessionEnd end, LastRequest request)
{
    if (request == LastRequest::inDoubt && m_turn.isOpen() && m_connection.phase == SessionPhase::active)
        end.sentence += " What you asked last may not have been done.";
    end.isFailure = true;
    end.unsent = m_connection.waitingTyped;
    m_lines.end(end.reason, ConnectionKeeper::Farewell::silent);
    goIdle();
    m_turn.breakOff();
    m_ports.observer.conversationEnded(end);
}

void SessionController::goIdle()
{
    m_listening.idleCheckTimer.cancel();
    m_listening.bargeInTimer.cancel();
    m_listening.followThroughTimer.cancel();
    m_listening.heldChunks.forget();
    m_listening.ear.closeAfterConversation();
    m_preparation.end();
    m_resting.end();
    m_heldModes.giveUp();
    m_desk.cancelAction();
    clearTarget();
    m_actions.isConsentPending = false;
    m_connection.waiting.clear();
    m_connection.waitingTyped.clear();
    m_connection.unanswered.clear();
    m_connection.lostRequests.clear();
    m_connection.untoldSince.reset();
    m_connection.isLossTold = false;
    setPhase(SessionPhase::idle);
    announceOnDevice();
}

void SessionController::setPhase(SessionPhase phase)
{
    m_connection.phase = phase;
    m_ports.observer.phaseChanged(phase);
}

} // namespace quorvell
