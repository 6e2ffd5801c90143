// SPDX-License-Identifier: MIT
// What the conversation's connections, its rest and its tools report.
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/tools/HelpModeSwitch.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

// ---- Connections

void SessionController::lineBecameReady(const ConnectionKeeper::Ready& ready)
{
    using Arrival = ConnectionKeeper::Arrival;
    m_connection.sessionID = ready.sessionID;
    m_meter.connectionBegan();
    if (ready.arrival == Arrival::first)
        beginConversation(ready.sessionID);
    else
        m_ports.log.record("session_continued", {{"id", ready.sessionID}});
    tellTurnsSince(ready.knows);
    if (ready.arrival == Arrival::rotated)
        ++m_meter.counts().rotations;
    if (ready.arrival == Arrival::woken)
        finishWaking();
    if (ready.arrival == Arrival::mended)
        mend();
    m_connection.waitingTyped.clear();
    for (const LiveMessageText& message : std::exchange(m_connection.waiting, {}))
        deliver(message);
    flushHeldChunks();
}

void SessionController::tellTurnsSince(ConversationMemory::Mark known)
{
    const auto turns = m_turn.conversation().settledSince(known);
    if (!turns.empty())
        deliver({.text = SessionEvents::turnsMeanwhile(turns), .answer = LiveMessageText::Answer::notWanted});
}

void SessionController::lineDelayed()
{
    tellProblem("The service is busy just now. Quorvell tries again by itself, and keeps what you have said.");
}

void SessionController::lineLost(const LiveClosure&)
{
    auto& held = m_listening.heldChunks;
    const bool isSpeechHeld = held.isAwaitingAnswer() && !held.isCutOff();
    if (isSpeechHeld) {
        m_turn.forgetUserWords(); // They are heard again.
    } else {
        held.answered();
        m_turn.finishUserWords();
    }
    held.connectionLost();
    // An answer to something else came in between, and the sound was let go.
    if (!isSpeechHeld && m_listening.wordless.isUnanswered(m_ports.scheduler.now()))
        tellProblem("What you said last may not have been heard. Please say it again if nothing comes of it.");
    m_listening.wordless.forget();
    m_connection.untoldSince.reset();
    if (m_turn.connectionLost()) {
        m_connection.lostRequests = m_turn.conversation().openRequests();
        m_connection.lostReplies = m_turn.conversation().openReplies();
        auto& waiting = m_connection.waiting;
        waiting.insert(waiting.begin(), m_connection.unanswered.begin(), m_connection.unanswered.end());
    }
    m_connection.unanswered.clear();
    if (m_lines.isReconnecting() && m_resting.state() == Doze::awake && !std::exchange(m_connection.isLossTold, true))
        m_ports.observer.linkChanged(SessionAudience::Link::reconnecting);
}

void SessionController::mend()
{
    ++m_meter.counts().reconnections;
    m_ports.log.record("session_mended", Json::object());
    if (std::exchange(m_connection.isLossTold, false))
        m_ports.observer.linkChanged(SessionAudience::Link::steady);
    const std::string requests = std::exchange(m_connection.lostRequests, {});
    if (requests.empty()) {
        if (m_turn.isOpen())
            m_connection.untoldSince = m_turn.conversation().settledMark();
        return;
    }
    const auto& replies = m_desk.actionReplies();
    deliver({.text = SessionEvents::handover({requests, std::exchange(m_connection.lostReplies, {}),
                 {replies.begin(), replies.end()}, m_desk.runningCalls()})});
}

/// A service that is stuck would not take up the next request either. What it was at is told, and not asked again.
void SessionController::turnGivenUp()
{
    if (!m_lines.ready() || m_desk.isWorking())
        return;
    m_listening.heldChunks.answered();
    m_listening.wordless.forget();
    m_lines.renew("unanswered");
    if (m_ports.synthesiser && m_settings.replies == SessionSettings::Replies::spoken)
        m_ports.synthesiser->say("No answer came. Please say it again.");
}

void SessionController::linesGivenUp(const LiveClosure& closure)
{
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

void SessionController::lineEnded(const std::string& reason)
{
    m_ports.log.record("session_ended", {{"reason", reason}});
    SessionEnd end;
    end.reason = reason;
    m_ports.observer.conversationEnded(end);
}

// ---- Events

struct SessionController::EventHandler {
    SessionController& session;
    ConversationTurn& turn;

    void operator()(const live_event::Audio& sound) { session.handleVoice(sound); }
    void operator()(const live_event::OutputTranscript& words)
    {
        if (turn.bargedIn())
            return;
        session.voiceReacted();
        turn.voiceWords(words.text);
    }
    void operator()(const live_event::InputTranscript& words) { session.wordsCame(words.text); }
    void operator()(const live_event::ToolCall& tool)
    {
        if (session.m_desk.isNews(tool.calls, session.m_lines.serial())) {
            const auto act = session.modelActed();
            turn.backendStarted();
            turn.acted(act);
        }
        session.m_desk.handle(tool.calls, session.m_lines.serial());
    }
    void operator()(const live_event::ToolCallCancellation& calls) { session.m_desk.cancel(calls.ids); }
    void operator()(const live_event::Delegated&)
    {
        session.modelActed();
        turn.expectNewReply();
        turn.backendStarted();
    }
    void operator()(const live_event::BackendIdle&) { turn.backendFinished(); }
    void operator()(const live_event::ServerError& error) { session.handleServerError(error); }
    void operator()(const live_event::Diagnostic& fact)
    {
        session.m_ports.log.record(fact.name, {{"detail", fact.detail}});
    }
    void operator()(const live_event::Usage& usage) { session.m_meter.report(usage); }
    void operator()(const live_event::BilledSeconds& usage) { session.m_meter.report(usage); }
    void operator()(const live_event::ContextUsage& usage) { session.m_meter.report(usage); }
    void operator()(const live_event::Thinking& thought) { turn.thinking(thought.text); }
    void operator()(const live_event::Interrupted&) { session.handleInterrupted(); }
    void operator()(const live_event::TurnComplete&) { turn.serviceFinished(); }
    void operator()(const live_event::VoiceActivity& activity)
    {
        if (activity.speaking)
            turn.expectNewReply();
    }
    // The connections themselves are about these.
    void operator()(const live_event::SetupComplete&) { }
    void operator()(const live_event::ResumptionHandle&) { }
    void operator()(const live_event::GoAway&) { }
    // What was generated may still have to sound; the turn's end is what counts.
    void operator()(const live_event::GenerationComplete&) { }
};

void SessionController::lineReported(const LiveServerEvent& event)
{
    std::visit(EventHandler{*this, m_turn}, event);
}

void SessionController::wordsCame(const std::string& words)
{
    noteActivity();
    ListeningState& heard = m_listening;
    heard.haveWordsCome = true;
    heard.lastWords = m_ports.scheduler.now();
    m_turn.expectNewReply();
    if (m_turn.isHearingWords() ? m_turn.areWordsLate() : heard.wordless.wordsBegan()) {
        m_turn.lateUserWords(words);
    } else {
        m_turn.userWords(words);
        awaitFollowThrough();
    }
    m_heldModes.wordsCame();
}

void SessionController::handleVoice(const live_event::Audio& sound)
{
    if (m_turn.bargedIn())
        return;
    voiceReacted();
    m_meter.voiceReceived(sound.pcm.size());
    m_turn.voiceSound(sound.pcm);
    m_listening.lastActivity += m_ports.player.unplayed(); // Quiet begins when it has sounded.
}

/// The service itself heard the user speak over the reply; what comes from now on is new.
void SessionController::handleInterrupted()
{
    if (m_turn.isVoiceSounding())
        m_turn.cutReply(ConversationTurn::Cut::spokenOver);
    m_turn.expectNewReply();
    noteActivity();
}

void SessionController::handleServerError(const live_event::ServerError& error)
{
    m_ports.log.record(
        "server_error", {{"code", error.code.value_or("")}, {"about", error.clientEventID.value_or("")}});
    m_ports.observer.problemArose(error.message);
    m_turn.problemShown();
}

void SessionController::lineWrote(const std::string& text)
{
    modelActed();
    m_turn.replyWritten(text);
}

void SessionController::lineReplyGrew(const std::string& delta)
{
    modelActed();
    m_turn.replyGrew(delta);
}

// ---- Rest

void SessionController::dozeChanged(Doze doze)
{
    m_ports.observer.restChanged(doze);
}

void SessionController::onsetAtRest()
{
    noteActivity();
    m_preparation.onset();
}

void SessionController::wordsHeardAtRest(const std::string& words)
{
    noteActivity();
    m_turn.userOverheard(words);
}

void SessionController::wakingBegan()
{
    m_listening.ear.startAfresh();
    m_preparation.used();
    m_lines.open(ConnectionKeeper::Arrival::woken);
}

void SessionController::finishWaking()
{
    const auto rested = m_ports.scheduler.now() - m_resting.dozedAt();
    const std::string words = m_resting.finishWaking();
    m_connection.lostRequests.clear(); // A line lost on the way had not been told them.
    m_ports.log.record("woke", {{"after_ms", rested.count()}});
    if (words.empty())
        return;
    noteActivity();
    m_ports.log.record("heard_while_resting", Json::object());
    deliver({.text = QuorvellPrompt::heardWhileResting(words)});
}

void SessionController::restFailed(const std::string& sentence)
{
    m_ports.log.record("rest_failed", Json::object());
    tellProblem(sentence);
}

void SessionController::wakingTookTooLong()
{
    m_ports.log.record("waking_failed", Json::object());
    const std::string requests = m_turn.conversation().openRequests();
    std::string sentence = "Quorvell could not connect again in time. Check the network";
    sentence += requests.empty() ? " and try again." : ", then say this again: “" + requests + "”.";
    if (!m_resting.canRest()) {
        SessionEnd end;
        end.reason = "waking failed";
        end.sentence = sentence;
        return endWith(std::move(end));
    }
    m_lines.end("waking failed", ConnectionKeeper::Farewell::silent);
    m_connection.waiting.clear();
    m_connection.waitingTyped.clear();
    m_listening.heldChunks.forget();
    m_listening.ear.startAfresh();
    m_resting.dozeAgain();
    m_turn.breakOff();
    tellProblem(sentence);
    announceOnDevice();
}

// ---- Tools

void SessionController::toolAnswered(const ToolDesk::Answer& answer)
{
    const bool isWanted = m_lines.ready() && m_lines.serial() == answer.askedBy;
    m_ports.log.record("tool_answered",
        {{"name", answer.answered.call.name}, {"failed", memberOf(answer.answered.result, "error") != nullptr},
            {"sent", isWanted}});
    noteActivity();
    m_turn.noteActivity();
    const bool isToBeTold = answer.scheduling != LiveResponseScheduling::silent;
    const bool isOfThisConversation =
        m_connection.phase == SessionPhase::active && answer.askedBy >= m_connection.firstSerial;
    if (isWanted)
        m_lines.ready()->sendToolResponse(
            {answer.answered.call.id, answer.answered.call.name, answer.answered.result}, answer.scheduling);
    else if (isToBeTold && isOfThisConversation && m_connection.lostRequests.empty())
        // Whoever asked is gone. A request that is about to be handed over brings its results along.
        tell(SessionEvents::lateResult(answer.answered), LiveMessageText::Answer::wanted);
    else
        return;
    if (isToBeTold)
        m_turn.resultGiven();
}

void SessionController::helpModeAsked(const LiveFunctionCall& call, ToolReply reply)
{
    m_heldModes.ask(call, std::move(reply), spokenWords());
}

void SessionController::judgeHelpMode(const LiveFunctionCall& call, ToolReply reply)
{
    m_turn.finishUserWords();
    m_turn.recentRequests().heard("", m_ports.scheduler.now()); // Forgets what is too old to count.
    const auto name = call.string("mode");
    const HelpModeSwitch decision = HelpModeSwitch::judge(name, m_settings.helpMode, m_turn.recentRequests());
    if (decision.mode && *decision.mode != m_settings.helpMode)
        switchHelpMode(*decision.mode);
    reply.answer(decision.answer);
}

void SessionController::toolTakesLong()
{
    const bool isVoiceFree = m_settings.replies == SessionSettings::Replies::spoken && !m_turn.isVoiceSounding()
        && !m_listening.ear.isHearingSpeech();
    if (m_lines.ready() && isVoiceFree)
        m_lines.ready()->sendVoiceInstructions(SessionEvents::stillWorking());
}

} // namespace quorvell
