// SPDX-License-Identifier: MIT
#include "Quorvell/session/consent/SpeechRecord.h"

#include "Quorvell/session/hearing/MicrophoneStream.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

constexpr int audible = 327; ///< Of 32767: 40 dB below the loudest; a voice ends in what is quieter.

std::chrono::milliseconds lengthOfSamples(std::size_t samples)
{
    return std::chrono::milliseconds(samples * 1000 / MicrophoneStream::sampleRateHz);
}

/// Up to the last sample that can be heard.
std::size_t audibleSamples(std::span<const std::uint8_t> pcm)
{
    for (std::size_t count = pcm.size() / 2; count > 0; --count) {
        const auto low = pcm[2 * count - 2];
        const auto high = pcm[2 * count - 1];
        const int sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(low | (high << 8)));
        if (std::abs(sample) > audible)
            return count;
    }
    return 0;
}

} // namespace

void SpeechRecord::speechBegan(SessionTime now, DeviceVoice device)
{
    const SessionTime from = now - onset;
    const SessionTime until = device == DeviceVoice::speaking ? now : voiceUntil(now);
    m_stretches.push_back({{from, now}, until, false, ++m_begun});
    if (m_stretches.size() > mostStretches)
        m_stretches.pop_front();
}

void SpeechRecord::speechGoesOn(SessionTime loud)
{
    if (!m_stretches.empty())
        m_stretches.back().sound.to = std::max(m_stretches.back().sound.to, loud);
}

void SpeechRecord::voiceSounds(std::span<const std::uint8_t> pcm, SessionTime now)
{
    const SessionTime from = now + m_player.unplayed();
    const std::size_t heard = audibleSamples(pcm);
    const auto silent = lengthOfSamples(pcm.size() / 2 - heard);
    if (heard == 0) {
        m_silentTail += silent;
        return;
    }
    if (m_voices.empty() || m_voices.back().until + m_silentTail < from)
        m_voices.push_back({from, from, std::exchange(m_wordsAhead, {})});
    if (m_voices.size() > mostVoices)
        m_voices.pop_front();
    m_silentTail = silent;
    m_voices.back().until = from + lengthOfSamples(heard);
    m_saidUntil = std::max(m_saidUntil, m_voices.back().until);
}

void SpeechRecord::voiceSays(const std::string& words, SessionTime now)
{
    const bool isSounding = !m_voices.empty() && m_voices.back().until > now;
    std::string& said = isSounding ? m_voices.back().words : m_wordsAhead;
    if (said.size() < longestWords)
        said += words;
}

void SpeechRecord::voiceCut(SessionTime now)
{
    m_saidUntil = std::min(m_saidUntil, now);
    m_silentTail = {};
    m_wordsAhead.clear();
    for (Voice& voice : m_voices)
        voice.until = std::min(voice.until, now);
}

void SpeechRecord::shown(SessionTime now)
{
    m_saidUntil = std::max(m_saidUntil, now);
}

SessionTime SpeechRecord::voiceUntil(SessionTime now) const
{
    // A loudspeaker may have fallen behind what was reckoned when the sound came.
    const auto left = m_player.unplayed() - m_silentTail;
    return left > std::chrono::milliseconds::zero() ? std::max(m_saidUntil, now + left) : m_saidUntil;
}

SpeechRecord::Stretch* SpeechRecord::stretchOfNextWords(SessionTime now)
{
    const auto wordless = [now](std::chrono::milliseconds age) {
        return [now, age](const Stretch& stretch) { return !stretch.hasWords && now - stretch.sound.to <= age; };
    };
    const auto first = std::find_if(m_stretches.begin(), m_stretches.end(), wordless(recognition));
    if (first != m_stretches.end())
        return &*first;
    const bool isSlow = !m_stretches.empty() && wordless(slowestRecognition)(m_stretches.back());
    return isSlow ? &m_stretches.back() : nullptr;
}

void SpeechRecord::wordsBegan(SessionTime now)
{
    m_areWordsComing = true;
    m_claimed = 0;
    if (Stretch* const stretch = stretchOfNextWords(now)) {
        stretch->hasWords = true;
        m_claimed = stretch->number;
    }
}

SpeechRecord::Stretch* SpeechRecord::claimed()
{
    const auto found = std::find_if(
        m_stretches.begin(), m_stretches.end(), [this](const Stretch& stretch) { return stretch.number == m_claimed; });
    return found == m_stretches.end() ? nullptr : &*found;
}

void SpeechRecord::wordsForgotten()
{
    if (Stretch* const stretch = claimed())
        stretch->hasWords = false;
    m_claimed = 0;
    m_areWordsComing = false;
}

HeardUtterance SpeechRecord::complete(const std::string& words, SessionTime now)
{
    HeardUtterance heard{.text = words, .ownWords = words, .at = now};
    if (const Stretch* const stretch = claimed()) {
        heard.sound = stretch->sound;
        heard.voiceUntil = stretch->voiceUntil;
        heard.voiceWords = voiceWordsDuring(stretch->sound);
    }
    m_claimed = 0;
    m_areWordsComing = false;
    return heard;
}

std::string SpeechRecord::voiceWordsDuring(const HeardUtterance::Sound& sound) const
{
    std::string words;
    for (const Voice& voice : m_voices)
        if (voice.from < sound.to && sound.from < voice.until)
            words += voice.words + " ";
    return words;
}

bool SpeechRecord::areWordsAwaited(SessionTime now) const
{
    const bool isAwaited =
        !m_stretches.empty() && !m_stretches.back().hasWords && now - m_stretches.back().sound.to <= recognition;
    return m_areWordsComing || isAwaited;
}

} // namespace quorvell
