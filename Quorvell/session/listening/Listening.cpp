// SPDX-License-Identifier: MIT
#include "Quorvell/session/listening/Listening.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

Listening::Listening(Ports ports, const SessionSettings& settings)
    : m_ports(std::move(ports))
    , m_microphone(settings.microphone)
    , m_followThrough(settings.limits.followThrough)
    , m_ear({m_ports.scheduler, m_ports.capture, m_ports.observer,
                [this](std::vector<MicGateOutput> ending) {
                    m_ports.report(listening_report::SpeechCut{std::move(ending)});
                }},
          settings.listening)
{
}

void Listening::begin()
{
    m_heldChunks.forget();
    m_wordless.forget();
    m_ear.openForConversation();
}

void Listening::end()
{
    m_bargeInTimer.cancel();
    m_followThroughTimer.cancel();
    m_heldChunks.forget();
    m_ear.closeAfterConversation();
}

Bytes Listening::startAfresh()
{
    m_heldChunks.forget();
    return m_ear.startAfresh();
}

// ---- Sound

void Listening::captured(std::span<const std::uint8_t> pcm)
{
    for (const MicrophoneStream::Step& step : m_ear.captured(pcm))
        hear(step);
}

void Listening::hear(const MicrophoneStream::Step& step)
{
    if (step.isOnset)
        handleSpeechOnset();
    for (const MicGateOutput& output : step.speech)
        m_heldChunks.add(output);
    LiveConnection* line = m_ports.lines.ready();
    if (line && m_microphone == SessionSettings::Microphone::everything && !m_ear.isBehindKey()) {
        line->sendAudio(step.chunk.pcm);
        m_ports.meter.chunkSent();
        m_heldChunks.giveTo([](const MicGateOutput&) {}); // The service has it, silence and all.
    } else {
        flushHeldChunks();
    }
    if (step.speech.empty())
        return;
    m_lastSpeech = m_ports.scheduler.now();
    m_wordless.goesOn(m_lastSpeech);
    if (m_ear.isHearingSpeech())
        m_ports.speech.speechGoesOn(m_lastSpeech - m_ear.quietFor());
    if (step.speech.back().isEndMark())
        speechEnded();
}

void Listening::handleSpeechOnset()
{
    using DeviceVoice = SpeechRecord::DeviceVoice;
    const SessionTime now = m_ports.scheduler.now();
    m_ports.quiet.noteActivity();
    m_ports.speech.speechBegan(now, m_ports.notices.isSpeaking() ? DeviceVoice::speaking : DeviceVoice::silent);
    m_ports.notices.hush();
    forgetHeldNoise();
    m_heldChunks.speechBegan();
    m_ports.turn.userBegan();
    m_haveWordsCome = false;
    m_wordless.began(now);
    if (!m_ports.turn.modelGenerating())
        return;
    m_ports.log.record("barged_in", {{"unheard_ms", m_ports.player.unplayed().count()}});
    m_ports.turn.cutReply(ConversationTurn::Cut::spokenOver);
    if (LiveConnection* line = m_ports.lines.ready())
        line->dropStale();
    m_ports.watch.userBargedIn();
}

/// What the service heard long ago and never reacted to was no speech.
void Listening::forgetHeldNoise()
{
    if (m_heldChunks.isAwaitingAnswer() && m_ports.scheduler.now() - m_lastSpeech > m_followThrough)
        m_heldChunks.answered();
}

void Listening::speechCut(const std::vector<MicGateOutput>& ending)
{
    for (const MicGateOutput& output : ending)
        m_heldChunks.add(output);
    flushHeldChunks();
    speechEnded();
}

void Listening::speechEnded()
{
    m_ports.quiet.noteActivity();
    // A service that has not noticed until then took it for noise; its reply goes on, and is heard again.
    if (m_ports.turn.bargedIn())
        m_bargeInTimer = m_ports.scheduler.after(bargeInNotice, [this] { m_ports.turn.expectNewReply(); });
}

void Listening::flushHeldChunks()
{
    LiveConnection* line = m_ports.lines.ready();
    if (!line)
        return;
    m_heldChunks.giveTo([this, line](const MicGateOutput& output) {
        if (output.isEndMark())
            return line->sendAudioPause();
        line->sendAudio(output.chunk->pcm);
        m_ports.meter.chunkSent();
    });
}

// ---- Lines

void Listening::lineLost()
{
    const bool isSpeechHeld = m_heldChunks.isAwaitingAnswer() && !m_heldChunks.isCutOff();
    if (isSpeechHeld) {
        m_ports.turn.forgetUserWords(); // They are heard again.
    } else {
        m_heldChunks.answered();
        m_ports.turn.finishUserWords();
    }
    m_heldChunks.connectionLost();
    // An answer to something else came in between, and the sound was let go.
    if (!isSpeechHeld && m_wordless.isUnanswered(m_ports.scheduler.now()))
        m_ports.notices.problem(
            "What you said last may not have been heard. Please say it again if nothing comes of it.");
    m_wordless.forget();
}

void Listening::giveUp()
{
    m_heldChunks.answered();
    m_wordless.forget();
}

// ---- Words, and what the model makes of them

void Listening::wordsCame(const std::string& words)
{
    ConversationTurn& turn = m_ports.turn;
    m_ports.quiet.noteActivity();
    m_haveWordsCome = true;
    m_lastWords = m_ports.scheduler.now();
    turn.expectNewReply();
    if (!turn.isHearingWords())
        m_ports.speech.wordsBegan(m_lastWords);
    if (turn.isHearingWords() ? turn.areWordsLate() : m_wordless.wordsBegan())
        return turn.lateUserWords(words);
    turn.userWords(words);
    awaitFollowThrough();
}

HeldModeCalls::Words Listening::spokenWords() const
{
    return {m_wordless.areWordsAwaited(m_ports.scheduler.now()), m_lastWords};
}

void Listening::modelReacted()
{
    m_heldChunks.answered();
    m_followThroughTimer.cancel();
    m_ports.quiet.noteActivity();
}

ConversationTurn::Act Listening::modelActed()
{
    const ConversationTurn& turn = m_ports.turn;
    const bool isRequestLeft = turn.isOpen() && !turn.conversation().openRequests().empty() && !turn.actedSinceWords();
    if (isRequestLeft && !turn.isHearingWords() && !m_haveWordsCome) {
        m_heldChunks.earlierAnswered();
        m_ports.quiet.noteActivity();
        return ConversationTurn::Act::onEarlier;
    }
    if (!isRequestLeft && !turn.isBackendWorking() && !turn.isHearingWords())
        m_wordless.actedOn();
    modelReacted();
    return ConversationTurn::Act::onLatest;
}

void Listening::voiceReacted()
{
    if (m_haveWordsCome || !m_heldChunks.isAwaitingAnswer())
        return modelReacted();
    m_ports.quiet.noteActivity();
}

void Listening::awaitFollowThrough()
{
    m_followThroughTimer = m_ports.scheduler.after(m_followThrough, [this] { followThrough(); });
}

void Listening::followThrough()
{
    ConversationTurn& turn = m_ports.turn;
    if (!m_ports.lines.ready() || !turn.isOpen())
        return;
    // What was said just now may lead the model back to what was said before.
    if (m_ear.isHearingSpeech() || isSpeechRecent() || turn.isBackendWorking())
        return awaitFollowThrough();
    turn.finishUserWords();
    if (turn.conversation().openRequests().empty() || turn.actedSinceWords() || turn.spokeSinceRequest())
        return;
    m_ports.log.record("request_missed", Json::object());
    m_heldChunks.answered();
    m_ports.report(listening_report::RequestMissed{});
}

bool Listening::isSpeechRecent() const
{
    return m_ports.scheduler.now() - m_lastSpeech < WordlessSpeech::recognition;
}

bool Listening::areWordsAwaited() const
{
    return m_heldChunks.isAwaitingAnswer() && isSpeechRecent();
}

} // namespace quorvell
