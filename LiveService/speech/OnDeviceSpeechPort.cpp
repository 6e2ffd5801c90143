// SPDX-License-Identifier: MIT
#include "LiveService/speech/OnDeviceSpeechPort.h"

#include "OnDeviceSpeech/SoundQuality.h"

#include <algorithm>
#include <utility>

namespace quorvell {

static_assert(SpeechPort::sampleRateHz == SpeechRecogniser::sampleRateHz);
static_assert(SpeechPort::sampleRateHz == SpeechVoice::sampleRateHz);

namespace {

/// A turn begins with so much of the room: less than what is kept from before the first word.
constexpr std::size_t roomSamples = SpeechPort::sampleRateHz / 5;

/// Below it a sentence of a bad line is mostly wrong in one of its words.
constexpr float leastConfidenceOfBadSound = 0.80F;
/// A time that was heard wrong on a bad line mostly had less.
constexpr float leastOfTimesOfBadSound = 0.85F;
/// Of clear sound: so little stands for words that are none. A voice that the recogniser hardly knew had 0.21 to 0.51
/// where every second word was wrong; requests that were heard rightly had 0.69 and more in four voices.
constexpr float leastConfidence = 0.55F;

HeardDoubts::Trouble troubleOf(const RecognisedUtterance& heard, SoundQuality quality)
{
    const bool isUnsure = heard.confidence < leastConfidenceOfBadSound || heard.leastOfTimes < leastOfTimesOfBadSound;
    if (quality != SoundQuality::good && isUnsure)
        return quality == SoundQuality::noisy ? HeardDoubts::Trouble::noise : HeardDoubts::Trouble::telephone;
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
    m_heard.clear();
    m_waiting.clear();
    m_knowsRoom = false;
    if (m_hearing->recogniser)
        m_hearing->recogniser->begin();
}

void OnDeviceSpeechPort::feed(std::span<const std::int16_t> samples)
{
    if (!m_hearing || !m_hearing->recogniser)
        return;
    samples = samples.first(std::min(samples.size(), SpeechRecogniser::longestUtteranceSamples - m_heard.size()));
    m_heard.insert(m_heard.end(), samples.begin(), samples.end());
    m_waiting.insert(m_waiting.end(), samples.begin(), samples.end());
    feedClean(m_knowsRoom ? NoiseSuppressor::frameSamples : roomSamples);
}

void OnDeviceSpeechPort::feedClean(std::size_t least)
{
    if (m_waiting.size() < least)
        return;
    if (!std::exchange(m_knowsRoom, true))
        m_suppressor.begin(std::span(m_waiting).first(std::min(m_waiting.size(), roomSamples)));
    const std::size_t whole = m_waiting.size() - m_waiting.size() % NoiseSuppressor::frameSamples;
    m_suppressor.process(std::span(m_waiting).first(whole));
    m_hearing->recogniser->feed(std::span(m_waiting).first(whole));
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(whole));
}

std::string OnDeviceSpeechPort::heardSoFar()
{
    return m_hearing && m_hearing->recogniser ? m_hearing->recogniser->heardSoFar() : std::string();
}

void OnDeviceSpeechPort::expectEnd()
{
    if (m_hearing && m_hearing->recogniser)
        m_hearing->recogniser->expectEnd();
}

HeardTurn OnDeviceSpeechPort::finish()
{
    if (!m_hearing)
        return {};
    if (!m_hearing->recogniser)
        return {.problem = m_hearing->problem};
    feedClean(1);
    RecognisedUtterance heard = m_hearing->recogniser->finish();
    HeardDoubts doubts{std::move(heard.orElse), std::move(heard.faintNames), troubleOf(heard, soundQualityOf(m_heard))};
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
