// SPDX-License-Identifier: MIT
#include "Media/echo/NoiseSuppressor.h"

#include <modules/audio_processing/include/audio_processing.h>
#include <rtc_base/logging.h>

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// The noise is known after about a second; so often the same moment of it is heard.
constexpr int timesRoomIsHeard = 4;

webrtc::AudioProcessing::Config noiseOnly()
{
    webrtc::AudioProcessing::Config config;
    config.high_pass_filter.enabled = true;
    config.noise_suppression.enabled = true;
    // Moderate. With pink noise 15 dB below the voice one voice was heard 53 % wrong without, 20 % so and 17 % with
    // more; another 20 %, 7 % and 9 %.
    config.noise_suppression.level = webrtc::AudioProcessing::Config::NoiseSuppression::kModerate;
    return config;
}

} // namespace

struct NoiseSuppressor::Parts {
    Parts()
    {
        rtc::LogMessage::LogToDebug(rtc::LS_NONE);
        module = webrtc::AudioProcessingBuilder().SetConfig(noiseOnly()).Create();
    }

    rtc::scoped_refptr<webrtc::AudioProcessing> module;
    const webrtc::StreamConfig format{sampleRateHz, 1};
};

NoiseSuppressor::NoiseSuppressor()
    : m_parts(std::make_unique<Parts>())
{
}

NoiseSuppressor::~NoiseSuppressor() = default;

void NoiseSuppressor::begin(std::span<const std::int16_t> room)
{
    m_parts->module->Initialize();
    std::array<std::int16_t, frameSamples> frame;
    for (int time = 0; time < timesRoomIsHeard; ++time) {
        for (auto left = room; left.size() >= frameSamples; left = left.subspan(frameSamples)) {
            std::ranges::copy(left.first(frameSamples), frame.begin());
            process(frame);
        }
    }
}

void NoiseSuppressor::process(std::span<std::int16_t> samples)
{
    for (; samples.size() >= frameSamples; samples = samples.subspan(frameSamples))
        m_parts->module->ProcessStream(samples.data(), m_parts->format, m_parts->format, samples.data());
}

} // namespace quorvell
