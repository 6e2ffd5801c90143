// SPDX-License-Identifier: MIT
#include "Quorvell/speech/DeviceVoice.h"

#include "Media/audio/Resampler.h"
#include "OnDeviceSpeech/SpeechVoice.h"

#include <cstring>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr int playerRateHz = 24000;

std::string shortened(const std::string& text)
{
    if (text.size() <= DeviceVoice::longestText)
        return text;
    const auto space = text.rfind(' ', DeviceVoice::longestText);
    return text.substr(0, space == std::string::npos ? DeviceVoice::longestText : space);
}

} // namespace

DeviceVoice::DeviceVoice(AudioPlayer& player, Scheduler& scheduler, std::string voice)
    : m_player(player)
    , m_voice(std::move(voice))
    , m_post(scheduler)
    , m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

DeviceVoice::~DeviceVoice()
{
    m_stop.request_stop();
}

void DeviceVoice::say(const std::string& text)
{
    const std::lock_guard lock(m_mutex);
    if (text.empty() || m_texts.size() >= mostTexts)
        return;
    ++m_unfinished;
    m_texts.push_back({shortened(text), m_turn, m_stop.get_token()});
    m_changed.notify_one();
}

void DeviceVoice::stop()
{
    const bool isHeard = isSpeaking();
    m_stop.request_stop();
    m_stop = {};
    ++m_turn;
    m_unfinished = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_texts.clear();
    }
    if (isHeard)
        m_player.stop();
    m_end = {};
}

bool DeviceVoice::isSpeaking() const
{
    return m_unfinished > 0 || (m_player.unplayed() > std::chrono::milliseconds::zero() && m_player.played() < m_end);
}

bool DeviceVoice::next(const std::stop_token& stop, Text& text)
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait(lock, stop, [this] { return !m_texts.empty(); }))
        return false;
    text = std::move(m_texts.front());
    m_texts.pop_front();
    return true;
}

void DeviceVoice::run(const std::stop_token& stop)
{
    SpeechVoice voice(m_voice);
    for (Text text; next(stop, text);) {
        Resampler resampler(SpeechVoice::sampleRateHz, playerRateHz);
        voice.speak(
            text.words, [&](std::span<const std::int16_t> samples) { play(text.turn, resampler.process(samples)); },
            text.stop);
        play(text.turn, resampler.finishToInt16());
        m_post([this, turn = text.turn] { finished(turn); });
    }
}

void DeviceVoice::play(std::uint64_t turn, std::span<const std::int16_t> samples)
{
    std::vector<std::uint8_t> pcm(samples.size_bytes());
    if (pcm.empty())
        return;
    std::memcpy(pcm.data(), samples.data(), pcm.size());
    m_post([this, turn, pcm = std::move(pcm)] {
        if (turn != m_turn)
            return;
        m_player.play(pcm);
        m_end = m_player.played() + m_player.unplayed();
    });
}

void DeviceVoice::finished(std::uint64_t turn)
{
    if (turn == m_turn && m_unfinished > 0)
        --m_unfinished;
}

} // namespace quorvell
