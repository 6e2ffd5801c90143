// SPDX-License-Identifier: MIT
#include "LiveService/speech/OnDeviceSpeechPort.h"

#include <algorithm>
#include <utility>

namespace quorvell {

static_assert(SpeechPort::sampleRateHz == SpeechRecogniser::sampleRateHz);
static_assert(SpeechPort::sampleRateHz == SpeechVoice::sampleRateHz);

namespace {

/// Below it a sentence of a bad line is mostly wrong in one of its words.
constexpr float leastConfidenceOfBadSound = 0.80F;
/// Of clear sound: so little stands for words that are none.
constexpr float leastConfidence = 0.45F;

HeardDoubts::Trouble troubleOf(const RecognisedUtterance& heard)
{
    if (heard.quality != SoundQuality::good && heard.confidence < leastConfidenceOfBadSound)
        return heard.quality == SoundQuality::noisy ? HeardDoubts::Trouble::noise : HeardDoubts::Trouble::telephone;
    return heard.confidence < leastConfidence ? HeardDoubts::Trouble::unclear : HeardDoubts::Trouble::none;
}

} // namespace

OnDeviceSpeechPort::OnDeviceSpeechPort(SpeechModels models, std::string defaultVoice)
    : m_models(std::move(models))
    , m_defaultVoice(std::move(defaultVoice))
    , m_voiceName(m_defaultVoice)
    , m_voice(std::make_unique<SpeechVoice>(m_voiceName))
{
}

void OnDeviceSpeechPort::expectSpeech()
{
    if (!m_hearing)
        m_hearing = SpeechRecogniser::create(m_models);
}

void OnDeviceSpeechPort::begin()
{
    expectSpeech();
    if (m_hearing->recogniser)
        m_hearing->recogniser->begin();
}

void OnDeviceSpeechPort::feed(std::span<const std::int16_t> samples)
{
    if (m_hearing && m_hearing->recogniser)
        m_hearing->recogniser->feed(samples);
}

std::string OnDeviceSpeechPort::heardSoFar()
{
    return m_hearing && m_hearing->recogniser ? m_hearing->recogniser->heardSoFar() : std::string();
}

HeardTurn OnDeviceSpeechPort::finish()
{
    if (!m_hearing)
        return {};
    if (!m_hearing->recogniser)
        return {.problem = m_hearing->problem};
    RecognisedUtterance heard = m_hearing->recogniser->finish();
    HeardDoubts doubts{std::move(heard.orElse), std::move(heard.faintNames), troubleOf(heard)};
    return {.text = std::move(heard.text), .doubts = std::move(doubts), .problem = std::move(heard.problem)};
}

void OnDeviceSpeechPort::speak(std::string_view wanted, std::string_view text, const Sink& sink, std::stop_token stop)
{
    const auto names = SpeechVoice::names();
    const std::string name = std::ranges::find(names, wanted) != names.end() ? std::string(wanted) : m_defaultVoice;
    if (name != m_voiceName) {
        m_voice = std::make_unique<SpeechVoice>(name);
        m_voiceName = name;
    }
    m_voice->speak(text, sink, stop);
}

} // namespace quorvell
