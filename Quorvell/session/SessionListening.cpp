// SPDX-License-Identifier: MIT
// Silence and sound: resting and stopping when nobody speaks, the way of the user's voice to the model.
#include "Quorvell/session/SessionController.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

// ---- Silence

void SessionController::startIdleCheck()
{
    m_listening.lastCheck = m_ports.scheduler.now();
    m_listening.idleCheckTimer = m_ports.scheduler.every(m_settings.limits.idleCheck, [this] { checkIdle(); });
}

void SessionController::checkIdle()
{
    meterTalk();
    announceIfQuiet();
    stopWhenDayIsUsedUp();
    restOrStopIfQuiet();
    m_lines.look();
}

void SessionController::restOrStopIfQuiet()
{
    const bool isSpeaking = m_ports.synthesiser && m_ports.synthesiser->isSpeaking();
    const bool isBusy = m_desk.isActing() || isSpeaking || m_resting.state() == Doze::waking;
    if (m_connection.phase != SessionPhase::active || isBusy)
        return;
    dozeIfQuiet();
    if (const IdleRules rules = idleRules(); rules.verdict(m_settings.limits) == IdleRules::Verdict::stop)
        stop(rules.reason());
}

void SessionController::dozeIfQuiet()
{
    if (idleRules().verdict(m_settings.limits) != IdleRules::Verdict::rest)
        return;
    m_ports.log.record("dozed", Json::object());
    ++m_meter.counts().dozes;
    m_listening.heldChunks.forget();
    m_lines.end("resting", ConnectionKeeper::Farewell::silent);
    m_resting.doze();
    m_resting.captured(m_listening.ear.startAfresh());
}

IdleRules SessionController::idleRules() const
{
    IdleRules rules;
    rules.quietFor = m_ports.scheduler.now() - m_listening.lastActivity;
    rules.doze = m_resting.state();
    rules.isListening = m_listening.ear.isListening();
    rules.isHighlighted = !m_actions.currentTarget.empty();
    rules.mayRest = m_settings.restsWhenQuiet && m_resting.canRest() && m_lines.ready() && isQuiet();
    return rules;
}

bool SessionController::isQuiet() const
{
    const bool areWordsAwaited = m_listening.heldChunks.isAwaitingAnswer()
        && m_ports.scheduler.now() - m_listening.lastSpeech < WordlessSpeech::recognition;
    return !m_turn.isOpen() && !m_turn.isVoiceSounding() && !m_listening.ear.isHearingSpeech() && !areWordsAwaited
        && !m_desk.isWorking() && !m_actions.isConsentPending && m_connection.waiting.empty();
}

void SessionController::noteActivity()
{
    m_listening.lastActivity = m_ports.scheduler.now();
}

// ---- Meters

void SessionController::meterTalk()
{
    const SessionTime now = m_ports.scheduler.now();
    // No connection outlives the computer's sleep, so none is paid for.
    const auto elapsed = std::min(now - std::exchange(m_listening.lastCheck, now), 2 * m_settings.limits.idleCheck);
    if (m_settings.medium == LiveMedium::voice && m_lines.openLines() > 0)
        m_meter.meterTalk(elapsed * m_lines.openLines());
    if (m_meter.isNews())
        m_ports.observer.usageChanged(m_meter.usage());
}

void SessionController::stopWhenDayIsUsedUp()
{
    const bool isSpoken = m_settings.medium == LiveMedium::voice && m_connection.phase == SessionPhase::active;
    if (!isSpoken || !m_meter.isDayUsedUp() || m_turn.isOpen())
        return;
    tellProblem(dayUsedUpSentence());
    stop("daily limit reached");
}

std::string SessionController::dayUsedUpSentence() const
{
    const auto minutes = m_meter.dailyMinutes().count();
    return "Today's " + std::to_string(minutes) + (minutes == 1 ? " minute" : " minutes") + " of spoken conversation "
        + (minutes == 1 ? "is" : "are")
        + " used up. Go on by typing (quorvell chat), or raise daily_minutes in the settings.";
}

// ---- Sound

void SessionController::microphoneCaptured(std::span<const std::uint8_t> pcm)
{
    if (m_connection.phase == SessionPhase::idle)
        return;
    if (m_resting.state() != Doze::dozing) {
        for (const MicrophoneStream::Step& step : m_listening.ear.captured(pcm))
            hear(step);
    } else if (m_listening.ear.isListening()) {
        m_resting.captured(pcm);
    }
}

void SessionController::hear(const MicrophoneStream::Step& step)
{
    if (step.isOnset)
        handleSpeechOnset();
    for (const MicGateOutput& output : step.speech)
        m_listening.heldChunks.add(output);
    const bool isEverythingSent =
        m_settings.microphone == SessionSettings::Microphone::everything && !m_listening.ear.isBehindKey();
    if (isEverythingSent && m_lines.ready()) {
        m_lines.ready()->sendAudio(step.chunk.pcm);
        m_meter.chunkSent();
        m_listening.heldChunks.giveTo([](const MicGateOutput&) {}); // The service has it, silence and all.
    } else {
        flushHeldChunks();
    }
    if (!step.speech.empty()) {
        m_listening.lastSpeech = m_ports.scheduler.now();
        m_listening.wordless.goesOn(m_listening.lastSpeech);
    }
    if (!step.speech.empty() && step.speech.back().isEndMark())
        speechEnded();
}

void SessionController::handleSpeechOnset()
{
    noteActivity();
    if (m_ports.synthesiser)
        m_ports.synthesiser->stop();
    forgetHeldNoise();
    m_listening.heldChunks.speechBegan();
    m_turn.userBegan();
    m_listening.haveWordsCome = false;
    m_listening.wordless.began(m_ports.scheduler.now());
    if (!m_turn.modelGenerating())
        return;
    m_ports.log.record("barged_in", {{"unheard_ms", m_ports.player.unplayed().count()}});
    m_turn.cutReply(ConversationTurn::Cut::spokenOver);
    if (m_lines.ready())
        m_lines.ready()->dropStale();
}

/// What the service heard long ago and never reacted to was no speech.
void SessionController::forgetHeldNoise()
{
    if (m_listening.heldChunks.isAwaitingAnswer()
        && m_ports.scheduler.now() - m_listening.lastSpeech > m_settings.limits.followThrough)
        m_listening.heldChunks.answered();
}

void SessionController::speechCut(const std::vector<MicGateOutput>& ending)
{
    for (const MicGateOutput& output : ending)
        m_listening.heldChunks.add(output);
    flushHeldChunks();
    speechEnded();
}

void SessionController::speechEnded()
{
    noteActivity();
    // A service that has not noticed until then took it for noise; its reply goes on, and is heard again.
    if (m_turn.bargedIn())
        m_listening.bargeInTimer = m_ports.scheduler.after(bargeInNotice, [this] { m_turn.expectNewReply(); });
}

void SessionController::flushHeldChunks()
{
    LiveConnection* line = m_lines.ready();
    if (!line)
        return;
    m_listening.heldChunks.giveTo([this, line](const MicGateOutput& output) {
        if (output.isEndMark())
            return line->sendAudioPause();
        line->sendAudio(output.chunk->pcm);
        m_meter.chunkSent();
    });
}

// ---- Requests that nobody takes up

/// Words that belong to sound: what was typed is complete as it comes.
HeldModeCalls::Words SessionController::spokenWords() const
{
    return {m_listening.wordless.areWordsAwaited(m_ports.scheduler.now()), m_listening.lastWords};
}

void SessionController::modelReacted()
{
    m_listening.heldChunks.answered();
    m_listening.followThroughTimer.cancel();
    noteActivity();
}

ConversationTurn::Act SessionController::modelActed()
{
    const bool isRequestLeft =
        m_turn.isOpen() && !m_turn.conversation().openRequests().empty() && !m_turn.actedSinceWords();
    if (isRequestLeft && !m_turn.isHearingWords() && !m_listening.haveWordsCome) {
        m_listening.heldChunks.earlierAnswered();
        noteActivity();
        return ConversationTurn::Act::onEarlier;
    }
    if (!isRequestLeft && !m_turn.isBackendWorking() && !m_turn.isHearingWords())
        m_listening.wordless.actedOn();
    modelReacted();
    return ConversationTurn::Act::onLatest;
}

/// A voice that speaks before the user's words have come may still speak of something else.
void SessionController::voiceReacted()
{
    if (m_listening.haveWordsCome || !m_listening.heldChunks.isAwaitingAnswer())
        return modelReacted();
    noteActivity();
}

void SessionController::awaitFollowThrough()
{
    m_listening.followThroughTimer =
        m_ports.scheduler.after(m_settings.limits.followThrough, [this] { followThrough(); });
}

void SessionController::followThrough()
{
    if (!m_lines.ready() || !m_turn.isOpen())
        return;
    // What was said just now may lead the model back to what was said before.
    const bool isSpeechRecent = m_ports.scheduler.now() - m_listening.lastSpeech < WordlessSpeech::recognition;
    if (m_listening.ear.isHearingSpeech() || isSpeechRecent || m_turn.isBackendWorking())
        return awaitFollowThrough();
    m_turn.finishUserWords();
    const std::string requests = m_turn.conversation().openRequests();
    if (requests.empty() || m_turn.actedSinceWords() || m_turn.spokeSinceRequest())
        return;
    m_ports.log.record("request_missed", Json::object());
    m_listening.heldChunks.answered();
    const auto& replies = m_desk.actionReplies();
    deliver({.text = SessionEvents::notTakenUp({requests, m_turn.conversation().openReplies(),
                 {replies.begin(), replies.end()}, m_desk.runningCalls()})});
}

void SessionController::targetRefresh()
{
    if (!m_actions.isTargetThere || m_actions.isTargetThere())
        return;
    m_ports.log.record("target_gone", Json::object());
    clearTarget();
}

} // namespace quorvell
