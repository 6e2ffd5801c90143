// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkTurn.h"

#include "Media/audio/SampleBytes.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t chunkSamples = MicrophoneStream::chunkBytes / 2;

std::vector<std::int16_t> withLeadIn(std::vector<std::int16_t> recording)
{
    const auto silence = static_cast<std::size_t>(TalkTurn::leadIn.count() * MicrophoneStream::sampleRateHz / 1000);
    recording.insert(recording.begin(), silence, 0);
    return recording;
}

} // namespace

SessionLimits TalkTurn::limitsFor(std::size_t samples)
{
    SessionLimits limits;
    const auto length = std::chrono::milliseconds(samples * 1000 / MicrophoneStream::sampleRateHz);
    limits.quietListening += length;
    limits.quietHighlighted += length;
    return limits;
}

TalkTurn::TalkTurn(Ports ports, std::vector<std::int16_t> recording)
    : m_ports(std::move(ports))
    , m_recording(withLeadIn(std::move(recording)))
{
}

void TalkTurn::begin(SessionController& session)
{
    m_session = &session;
    m_session->begin();
}

void TalkTurn::interrupt()
{
    end("Interrupted before the answer was complete.");
}

void TalkTurn::phaseChanged(SessionPhase phase)
{
    if (phase == SessionPhase::active)
        startPlaying();
}

void TalkTurn::userSaid(const std::string&, Words)
{
    m_wasUnderstood = true;
}

void TalkTurn::turnCompleted(TurnOutcome outcome)
{
    m_isAnswered = m_isAnswered || outcome == TurnOutcome::answered;
    m_isUnanswered = outcome == TurnOutcome::unanswered;
    // An answer to the end of the recording is the last one.
    if (hasInputEnded() && !m_isEnding && outcome != TurnOutcome::brokenOff)
        m_ports.scheduler.post([this] { end(m_isUnanswered ? "No answer came. Try again." : ""); });
}

void TalkTurn::conversationEnded(const SessionEnd& ended)
{
    m_ticks.cancel();
    m_isEnding = true;
    if (!ended.isFailure && m_problem.empty() && !m_wasUnderstood)
        m_problem = problemOfNothingUnderstood();
    if (!ended.isFailure && m_problem.empty() && !hasInputEnded())
        m_problem = problemOfUnheardRest();
    m_ports.finished({!ended.isFailure && m_problem.empty(), m_problem});
}

void TalkTurn::startPlaying()
{
    m_start = m_ports.scheduler.now();
    m_ticks = m_ports.scheduler.every(MicrophoneStream::chunkLength, [this] { play(); });
}

/// A timer may come late; the pace is kept by the clock, as a microphone would.
void TalkTurn::play()
{
    const auto elapsed = m_ports.scheduler.now() - m_start;
    while (m_chunksFed * MicrophoneStream::chunkLength <= elapsed && !m_isEnding)
        feedChunk();
    judge();
}

void TalkTurn::feedChunk()
{
    Bytes chunk(MicrophoneStream::chunkBytes);
    const std::size_t count = std::min(chunkSamples, m_recording.size() - m_position);
    std::ranges::copy(bytesOfSamples(std::span(m_recording).subspan(m_position, count)), chunk.begin());
    m_session->microphoneCaptured(chunk);
    ++m_chunksFed;
    const bool isLast = count > 0 && m_position + count == m_recording.size();
    m_position += count;
    if (isLast) {
        m_inputEnd = m_ports.scheduler.now();
        m_ports.inputEnded();
    }
}

void TalkTurn::judge()
{
    if (m_isEnding || !hasInputEnded() || m_session->isTurnOpen())
        return;
    const auto quiet = m_ports.scheduler.now() - m_inputEnd;
    if (m_isAnswered && quiet >= lateWords)
        return end("");
    const bool wasAnythingSent = m_session->usage().microphoneChunks > 0;
    if (quiet >= (wasAnythingSent ? understanding : lateWords))
        end(m_isUnanswered ? "No answer came. Try again." : problemOfNothingUnderstood());
}

std::string TalkTurn::problemOfNothingUnderstood() const
{
    if (m_session->usage().microphoneChunks == 0)
        return "No speech was heard in the recording. Record it louder, or closer to the microphone, and try again.";
    return "Nothing was understood in the recording. Speak a little more slowly, and try again.";
}

std::string TalkTurn::problemOfUnheardRest() const
{
    const auto seconds = [](std::size_t samples) { return samples / MicrophoneStream::sampleRateHz; };
    const auto clock = [](std::size_t whole) {
        return std::to_string(whole / 60) + (whole % 60 < 10 ? ":0" : ":") + std::to_string(whole % 60);
    };
    return "The conversation ended after " + clock(seconds(m_position)) + " of " + clock(seconds(m_recording.size()))
        + " minutes; the rest of the recording was not heard. Play that part once more.";
}

void TalkTurn::end(std::string problem)
{
    if (std::exchange(m_isEnding, true))
        return;
    m_ticks.cancel();
    m_problem = std::move(problem);
    if (m_session->phase() == SessionPhase::idle)
        m_ports.finished({false, m_problem});
    else
        m_session->stop("end of the turn");
}

} // namespace quorvell
