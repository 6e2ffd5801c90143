// SPDX-License-Identifier: MIT
#include "Quorvell/session/SessionController.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

SessionController::SessionController(Ports ports, SessionSettings settings)
    : m_ports(std::move(ports))
    , m_settings(std::move(settings))
    , m_reports([this](SessionReport report) { take(report); })
    , m_timers(m_ports.scheduler,
          [this](const WrappingScheduler::Action& action) {
              const auto call = m_reports.enter();
              action();
          })
    , m_notices(m_ports.observer, m_ports.synthesiser, m_settings.replies)
    , m_meter(m_ports.usageStore, m_settings.dailyMinutes)
    , m_speech(m_ports.player)
    , m_turn({m_timers, m_ports.player, m_ports.observer, m_speech,
                 [this](TurnReport report) { m_reports.add(report); }, *m_ports.watch},
          m_settings.replies, m_settings.patience)
    , m_lines({m_timers, m_ports.log,
                  [this](LiveConnectionObserver& line) { return m_ports.connections(line, m_settings.medium); },
                  m_ports.jitter, [this](ConnectionFact fact) { m_reports.addFromOutside(std::move(fact)); },
                  [this](LineReport report) { m_reports.add(std::move(report)); }},
          m_settings.limits)
    , m_preparation({m_timers, m_lines, m_ports.log, m_meter}, m_settings.limits)
    , m_resting({m_timers, m_ports.dozeListener, m_ports.observer,
                    [this](RestReport report) { m_reports.add(std::move(report)); }},
          m_settings.limits)
    , m_quiet({m_timers, m_ports.log, [this] { checkIdle(); }}, m_settings)
    , m_listening({m_timers, m_ports.capture, m_ports.player, m_ports.log, m_ports.observer, m_lines, m_turn, m_meter,
                      m_quiet, m_notices, m_speech,
                      [this](ListeningReport report) { m_reports.add(std::move(report)); }, *m_ports.watch},
          m_settings)
    , m_desk({m_timers, m_ports.tools, m_ports.log, m_ports.observer,
                 [this](ToolReport report) { m_reports.add(std::move(report)); }, *m_ports.watch},
          m_settings.limits)
    , m_modes({m_timers, m_ports.log, m_ports.observer, m_turn,
                  [this](ToolReport report) { m_reports.add(std::move(report)); }, *m_ports.watch},
          m_settings.helpMode)
    , m_outbox({m_lines, m_turn, m_meter, m_notices})
    , m_handover({m_turn, m_desk, m_outbox})
    , m_answers({m_ports.log, m_lines, m_turn, m_outbox, m_handover})
    , m_events({m_ports.log, m_ports.observer, m_ports.player, m_lines, m_turn, m_listening, m_quiet, m_meter, m_desk,
          m_modes, *m_ports.watch})
    , m_briefing({m_settings, m_ports.tools, m_modes, m_turn, m_ports.whereAndWhen})
    , m_own({m_timers, m_ports.log, m_notices, m_outbox, m_quiet, m_turn},
          m_ports.synthesiser || m_settings.replies != SessionSettings::Replies::spoken
              ? OwnWords::Questions::reachTheUser
              : OwnWords::Questions::goUnheard)
    , m_survey{m_turn, m_listening, m_desk, m_quiet, m_outbox, m_notices, m_lines, m_resting}
    , m_rest({m_timers, m_ports.log, m_resting, m_lines, m_preparation, m_briefing, m_listening, m_quiet, m_turn,
          m_meter, m_outbox, m_handover, m_notices})
{
}

SessionController::~SessionController()
{
    m_reports.close();
    // They outlive the session and would report to it.
    if (m_ports.dozeListener)
        m_ports.dozeListener->stop();
    if (m_ports.capture && m_ports.capture->isOpen())
        m_ports.capture->close();
}

// ---- The story of a beginning

void SessionController::begin()
{
    const auto call = m_reports.enter();
    if (m_phase == SessionPhase::idle)
        start({});
    else
        m_rest.wake();
}

void SessionController::start(std::vector<std::string> unsent)
{
    m_meter.begin();
    if (m_settings.medium == LiveMedium::voice && m_meter.isDayUsedUp()) {
        SessionEnd end;
        end.reason = "daily limit reached";
        end.isFailure = true;
        end.mustUserAct = true;
        end.sentence = m_meter.usedUpSentence();
        end.unsent = std::move(unsent);
        return m_ports.observer.conversationEnded(end);
    }
    m_sessionStart = m_timers.now();
    m_resting.begin();
    m_desk.begin();
    m_answers.begin();
    setPhase(SessionPhase::connecting);
    m_listening.begin();
    m_lines.open(Arrival::first, m_briefing.write());
}

void SessionController::take(const line_report::Ready& ready)
{
    if (!m_lines.ready())
        return; // Gone again.
    m_meter.connectionBegan();
    if (ready.arrival == Arrival::first)
        beginConversation(ready.sessionID);
    else
        m_ports.log.record("session_continued", {{"id", codeWord(ready.sessionID)}});
    m_handover.tellTurnsSince(ready.knows);
    if (ready.arrival == Arrival::rotated)
        ++m_meter.counts().rotations;
    if (ready.arrival == Arrival::woken)
        m_rest.finishWaking();
    if (ready.arrival == Arrival::mended)
        mend();
    m_outbox.deliverWaiting();
    m_listening.flushHeldChunks();
}

void SessionController::beginConversation(const std::string& sessionID)
{
    m_ports.log.record(
        "session_started", {{"id", codeWord(sessionID)}, {"after_ms", (m_timers.now() - m_sessionStart).count()}});
    setPhase(SessionPhase::active);
    m_quiet.begin();
    const bool isAskedAlready = !m_outbox.isEmpty() || m_listening.isHoldingSpeech();
    if (!isAskedAlready && m_settings.greeting == SessionSettings::Greeting::spoken)
        greet();
}

void SessionController::greet()
{
    // Where answers are shown, the model that writes them greets; else the voice does.
    if (m_settings.replies == SessionSettings::Replies::shown)
        return m_outbox.tell({.text = QuorvellPrompt::greetingEvent(m_settings.userName, frontApp())});
    m_turn.open();
    m_lines.ready()->sendVoiceInstructions(QuorvellPrompt::liveGreeting(m_settings.userName, frontApp()));
}

std::string SessionController::frontApp() const
{
    const std::string app = m_ports.frontApp ? m_ports.frontApp() : m_settings.frontApp;
    return app.empty() ? "their desktop" : app;
}

// ---- What the user and the program want

void SessionController::send(const LiveMessageText& message)
{
    const auto call = m_reports.enter();
    if (m_phase == SessionPhase::idle)
        return;
    m_rest.wake();
    m_outbox.send(message);
}

void SessionController::announce(std::string sentence)
{
    const auto call = m_reports.enter();
    m_own.announce(std::move(sentence));
    if (m_phase == SessionPhase::idle)
        return m_own.tellOnDevice();
    m_rest.wake();
    m_own.tellIfDue(m_survey.facts());
}

void SessionController::respond()
{
    const auto call = m_reports.enter();
    if (!m_lines.ready())
        return;
    m_turn.open();
    m_turn.backendStarted();
    m_lines.ready()->requestAnswer();
}

void SessionController::submitTyped(const TypedMessage& message, QuorvellPrompt::Entry entry)
{
    const auto call = m_reports.enter();
    const std::string text = trimmed(message.text());
    if (text.empty())
        return;
    if (m_phase == SessionPhase::idle)
        start({text});
    if (m_phase == SessionPhase::idle)
        return;
    std::string ownWords;
    for (const TypedMessage::Piece& piece : message.pieces)
        if (!piece.pasted)
            ownWords += piece.text;
    m_quiet.noteActivity();
    m_turn.userTyped(text, ownWords);
    m_rest.wake();
    const auto reply = message.spoken ? QuorvellPrompt::Reply::spoken : QuorvellPrompt::Reply::shown;
    m_outbox.sendTyped(text, {.text = QuorvellPrompt::typedMessage(text, entry, reply)});
}

void SessionController::microphoneCaptured(std::span<const std::uint8_t> pcm)
{
    const auto call = m_reports.enter();
    if (m_phase == SessionPhase::idle)
        return;
    if (m_resting.state() != Doze::dozing)
        m_listening.captured(pcm);
    else if (m_listening.ear().isListening())
        m_resting.captured(pcm);
}

void SessionController::setMuted(Muting muting)
{
    const auto call = m_reports.enter();
    m_listening.ear().setMuted(muting);
    m_quiet.noteActivity();
}

void SessionController::pushToTalk(Key key)
{
    const auto call = m_reports.enter();
    Ear& ear = m_listening.ear();
    if (!ear.isBehindKey())
        return;
    if (key == Key::released)
        return ear.releaseKey();
    begin();
    m_quiet.noteActivity();
    ear.pressKey();
}

void SessionController::interrupt()
{
    const auto call = m_reports.enter();
    m_notices.hush();
    m_desk.cancelAction();
    if (m_turn.isOpen() || m_turn.isVoiceSounding()) {
        m_ports.log.record("silenced", Json::object());
        m_turn.cutReply(ConversationTurn::Cut::silenced);
    }
    m_ports.watch->stopped();
    if (m_lines.ready())
        m_lines.ready()->dropStale();
    m_quiet.noteActivity();
}

void SessionController::putQuestion(const std::string& question)
{
    const auto call = m_reports.enter();
    if (m_phase != SessionPhase::active)
        return;
    m_speech.shown(m_timers.now());
    m_own.ask(question);
}

void SessionController::setHelpMode(HelpMode mode)
{
    const auto call = m_reports.enter();
    if (mode == m_modes.mode())
        return;
    m_modes.change(mode);
    if (m_lines.ready()) // A connection that is still to come begins with it.
        m_outbox.tell({.text = SessionEvents::helpModeSwitched(mode), .answer = LiveMessageText::Answer::notWanted});
}

void SessionController::showTarget(std::string currentTarget, std::function<bool()> isStillThere)
{
    m_quiet.showTarget(std::move(currentTarget), std::move(isStillThere));
}

void SessionController::clearTarget()
{
    m_quiet.clearTarget();
}

void SessionController::noteConsent(Consent consent)
{
    m_quiet.noteConsent(consent);
}

bool SessionController::areWordsAwaited() const
{
    return m_listening.ear().isHearingSpeech() || m_speech.areWordsAwaited(m_timers.now());
}

void SessionController::runTool(const LiveFunctionCall& call, ToolReply reply)
{
    const auto reports = m_reports.enter();
    m_desk.run(call, std::move(reply), m_lines.ready() ? ToolDesk::Conversation::live : ToolDesk::Conversation::none);
}

// ---- Tools

void SessionController::take(const tool_report::Answered& answer)
{
    using Conversation = ToolAnswers::Conversation;
    m_quiet.noteActivity();
    m_answers.give(answer, m_phase == SessionPhase::active ? Conversation::active : Conversation::other);
}

void SessionController::take(const tool_report::TakesLong&)
{
    const bool isVoiceFree = m_settings.replies == SessionSettings::Replies::spoken && !m_turn.isVoiceSounding()
        && !m_listening.ear().isHearingSpeech();
    if (m_lines.ready() && isVoiceFree)
        m_lines.ready()->sendVoiceInstructions(SessionEvents::stillWorking());
}

// ---- Turns

void SessionController::take(const turn_report::Closed& turn)
{
    m_outbox.forgetSent();
    m_desk.forgetReplies();
    m_lines.noteTurnClosed(turn.beganAt, m_turn.conversation().settledMark());
    m_handover.turnClosed();
}

/// A service that is stuck would not take up the next request either. What it was at is told, and not asked again.
void SessionController::take(const turn_report::GivenUp&)
{
    if (!m_lines.ready() || m_desk.isWorking())
        return;
    m_listening.giveUp();
    m_lines.renew("unanswered");
    m_notices.say("No answer came. Please say it again.");
}

void SessionController::take(const turn_report::StopSaid&)
{
    m_desk.cancelAction();
    m_ports.watch->stopped();
}

// ---- Silence

void SessionController::checkIdle()
{
    using Moment = ConnectionKeeper::Moment;
    meterTalk();
    m_own.tellIfDue(m_survey.facts());
    stopWhenDayIsUsedUp();
    restOrStopIfQuiet();
    m_lines.look(m_survey.facts().isQuiet() ? Moment::quiet : Moment::busy);
}

void SessionController::meterTalk()
{
    const auto elapsed = m_quiet.sinceLastLook();
    if (m_settings.medium == LiveMedium::voice && m_lines.openLines() > 0)
        m_meter.meterTalk(elapsed * m_lines.openLines());
    if (m_meter.isNews())
        m_ports.observer.usageChanged(m_meter.usage());
}

void SessionController::stopWhenDayIsUsedUp()
{
    if (m_settings.medium != LiveMedium::voice || !m_meter.isDayUsedUp() || m_turn.isOpen())
        return;
    m_notices.problem(m_meter.usedUpSentence());
    stop("daily limit reached");
}

void SessionController::restOrStopIfQuiet()
{
    if (m_phase != SessionPhase::active)
        return;
    dozeIfQuiet();
    if (const QuietFacts facts = m_survey.facts(); m_quiet.verdict(facts) == IdleRules::Verdict::stop)
        stop(m_quiet.reason(facts));
}

// ---- Rest

void SessionController::dozeIfQuiet()
{
    if (m_quiet.verdict(m_survey.facts()) == IdleRules::Verdict::rest)
        m_rest.doze();
}

void SessionController::wakingTookTooLong()
{
    if (m_resting.state() != Doze::waking)
        return;
    m_ports.log.record("waking_failed", Json::object());
    SessionEnd end;
    end.reason = "waking failed";
    end.sentence = m_rest.wakingFailedSentence();
    if (!m_resting.canRest())
        return endWith(std::move(end));
    m_rest.dozeAgain(end.sentence);
    m_own.tellOnDevice();
}

// ---- Connections that are lost

void SessionController::take(const line_report::Delayed&)
{
    m_notices.problem("The service is busy just now. Quorvell tries again by itself, and keeps what you have said.");
}

void SessionController::take(const line_report::Lost&)
{
    m_listening.lineLost();
    m_handover.lineLost();
    if (m_lines.isReconnecting() && m_resting.state() == Doze::awake && !std::exchange(m_isLossTold, true))
        m_ports.observer.linkChanged(SessionAudience::Link::reconnecting);
}

void SessionController::mend()
{
    ++m_meter.counts().reconnections;
    m_ports.log.record("session_mended", Json::object());
    if (std::exchange(m_isLossTold, false))
        m_ports.observer.linkChanged(SessionAudience::Link::steady);
    m_handover.lineMended();
}

void SessionController::take(const line_report::GivenUp& fact)
{
    const LiveClosure& closure = fact.closure;
    if (m_resting.state() == Doze::waking && !closure.mustUserAct)
        return wakingTookTooLong();
    SessionEnd end;
    end.reason = closure.reason;
    end.mustUserAct = closure.mustUserAct;
    end.sentence = closure.sentence.empty()
        ? "The connection was lost and could not be made again. Check the network, then try again."
        : closure.sentence;
    // What was refused at the door was not begun; what went out over a line that was lost may have been.
    const bool isShut = closure.code < LiveClosure::normal || closure.mustUserAct;
    const bool isRefused = isShut && !m_lines.isReconnecting();
    endWith(std::move(end), isRefused && !m_turn.actedSinceWords() ? LastRequest::untouched : LastRequest::inDoubt);
}

// ---- The end

void SessionController::stop(std::string_view reason)
{
    const auto call = m_reports.enter();
    if (m_phase == SessionPhase::idle)
        return;
    m_turn.end();
    m_ports.player.stop();
    const bool isEndToCome = m_lines.end(std::string(reason), ConnectionKeeper::Farewell::reported);
    goIdle();
    if (!isEndToCome)
        m_farewell = m_timers.after(std::chrono::milliseconds::zero(),
            [this, reason = std::string(reason)] { take(line_report::Ended{reason}); });
}

void SessionController::take(const line_report::Ended& fact)
{
    m_ports.log.record("session_ended", {{"reason", fact.reason}});
    SessionEnd end;
    end.reason = fact.reason;
    m_ports.observer.conversationEnded(end);
}

void SessionController::endWith(SessionEnd end, LastRequest request)
{
    if (request == LastRequest::inDoubt && m_turn.isOpen() && m_phase == SessionPhase::active)
        end.sentence += " What you asked last may not have been done.";
    end.isFailure = true;
    end.unsent = m_outbox.waitingTyped();
    m_lines.end(end.reason, ConnectionKeeper::Farewell::silent);
    goIdle();
    m_turn.breakOff();
    m_ports.observer.conversationEnded(end);
}

void SessionController::goIdle()
{
    m_quiet.end();
    m_listening.end();
    m_preparation.end();
    m_resting.end();
    m_modes.giveUp();
    m_desk.cancelAction();
    m_outbox.forget();
    m_handover.forget();
    m_isLossTold = false;
    m_ports.watch->ended();
    setPhase(SessionPhase::idle);
    m_own.tellOnDevice();
}

void SessionController::setPhase(SessionPhase phase)
{
    m_phase = phase;
    m_ports.observer.phaseChanged(phase);
}

} // namespace quorvell
