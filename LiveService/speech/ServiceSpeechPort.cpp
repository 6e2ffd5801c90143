// SPDX-License-Identifier: MIT
#include "LiveService/speech/ServiceSpeechPort.h"

#include "Media/audio/Resampler.h"
#include "Understanding/time/SpokenToWritten.h"

#include <utility>

namespace quorvell {

namespace {

/// Some recognisers write as the rules want it, with numbers in digits; others give the bare words as they were said.
std::string written(const std::string& words)
{
    const bool isWritten = words.find_first_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ.,?!") != std::string::npos;
    return isWritten ? words : spokenToWritten(words);
}

} // namespace

static_assert(SpeechPort::sampleRateHz == WyomingRecogniser::sampleRateHz);

ServiceSpeechPort::ServiceSpeechPort(std::unique_ptr<SpeechPort> own, const Services& services)
    : m_own(std::move(own))
{
    if (services.recogniser)
        m_recogniser.emplace(*services.recogniser);
    if (services.voice)
        m_voice.emplace(*services.voice);
}

void ServiceSpeechPort::begin()
{
    m_own->begin();
    if (m_recogniser)
        m_recogniser->begin();
}

void ServiceSpeechPort::feed(std::span<const std::int16_t> samples)
{
    if (m_recogniser)
        m_recogniser->feed(samples);
    m_own->feed(samples);
}

HeardTurn ServiceSpeechPort::finish()
{
    // Asked first: it works while this computer's own is still at the last words.
    const auto words = m_recogniser ? m_recogniser->finish() : std::nullopt;
    HeardTurn turn = m_own->finish();
    if (words)
        turn = {.text = written(*words)};
    else if (m_recogniser && m_recogniser->hasJustFailed())
        addNotice("The speech recogniser at " + m_recogniser->address().text()
            + " does not answer, so I listen by myself for now.");
    turn.notice = std::exchange(m_notice, {});
    return turn;
}

void ServiceSpeechPort::addNotice(const std::string& sentence)
{
    m_notice += (m_notice.empty() ? "" : " ") + sentence;
}

void ServiceSpeechPort::speak(std::string_view voice, std::string_view text, const Sink& sink, std::stop_token stop)
{
    std::optional<Resampler> resampler;
    int rate = 0;
    const auto take = [&](std::span<const std::int16_t> samples, int rateHz) {
        if (std::exchange(rate, rateHz) != rateHz)
            resampler.emplace(rateHz, sampleRateHz);
        sink(resampler->process(samples));
    };
    const auto verdict = m_voice ? m_voice->speak(text, take, stop) : WyomingVoice::Verdict::failed;
    if (resampler && verdict == WyomingVoice::Verdict::spoken)
        sink(resampler->finishToInt16());
    // What broke off in the middle is said once more: half an answer is worse than one and a half.
    if (verdict == WyomingVoice::Verdict::failed)
        m_own->speak(voice, text, sink, stop);
    if (m_voice && m_voice->hasJustFailed())
        addNotice("The voice at " + m_voice->address().text() + " does not answer, so I speak with my own for now.");
}

} // namespace quorvell
