// SPDX-License-Identifier: MIT
#include "Media/audio/Resampler.h"

#include <samplerate.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvell {

namespace {

constexpr float fullScale = 32768.0F;
constexpr std::size_t blockFrames = 4096;

int withinLimits(int rateHz)
{
    return std::clamp(rateHz, Resampler::lowestRateHz, Resampler::highestRateHz);
}

enum class More { mayFollow, isOver };

} // namespace

struct Resampler::State {
    State(int fromHz, int toHz, Quality quality)
        : ratio(static_cast<double>(withinLimits(toHz)) / withinLimits(fromHz))
    {
        int failure = 0;
        const int converter = quality == Quality::best ? SRC_SINC_MEDIUM_QUALITY : SRC_SINC_FASTEST;
        handle.reset(src_new(converter, 1, &failure));
    }

    std::vector<float> convert(std::span<const float> samples, More more);

    struct Delete {
        void operator()(SRC_STATE* state) const { src_delete(state); }
    };
    std::unique_ptr<SRC_STATE, Delete> handle;
    double ratio;
};

std::vector<float> Resampler::State::convert(std::span<const float> samples, More more)
{
    if (ratio == 1.0 || !handle)
        return {samples.begin(), samples.end()};
    // The library reads through the pointer even when the length is 0.
    static constexpr float nothing = 0;
    std::vector<float> converted;
    std::array<float, blockFrames> block;
    SRC_DATA data{};
    data.src_ratio = ratio;
    data.end_of_input = more == More::isOver ? 1 : 0;
    data.data_in = samples.empty() ? &nothing : samples.data();
    data.input_frames = static_cast<long>(samples.size());
    data.data_out = block.data();
    data.output_frames = blockFrames;
    do {
        if (src_process(handle.get(), &data) != 0)
            return converted;
        converted.insert(converted.end(), block.begin(), block.begin() + data.output_frames_gen);
        data.data_in += data.input_frames_used;
        data.input_frames -= data.input_frames_used;
    } while (data.input_frames_used > 0 || data.output_frames_gen > 0);
    return converted;
}

Resampler::Resampler(int fromHz, int toHz, Quality quality)
    : m_state(std::make_unique<State>(fromHz, toHz, quality))
{
}

Resampler::~Resampler() = default;
Resampler::Resampler(Resampler&&) noexcept = default;
Resampler& Resampler::operator=(Resampler&&) noexcept = default;

std::vector<float> Resampler::process(std::span<const float> samples)
{
    std::vector<float> finite(samples.begin(), samples.end());
    std::replace_if(
        finite.begin(), finite.end(), [](float sample) { return !std::isfinite(sample); }, 0.0F);
    return m_state->convert(finite, More::mayFollow);
}

std::vector<std::int16_t> Resampler::process(std::span<const std::int16_t> samples)
{
    return toInt16(m_state->convert(toFloat(samples), More::mayFollow));
}

std::vector<float> Resampler::finish()
{
    auto rest = m_state->convert({}, More::isOver);
    if (m_state->handle)
        src_reset(m_state->handle.get());
    return rest;
}

std::vector<std::int16_t> Resampler::finishToInt16()
{
    return toInt16(finish());
}

std::vector<std::int16_t> toInt16(std::span<const float> samples)
{
    std::vector<std::int16_t> converted(samples.size());
    std::transform(samples.begin(), samples.end(), converted.begin(), [](float sample) {
        const float finite = std::isfinite(sample) ? sample : 0.0F;
        return static_cast<std::int16_t>(std::lround(std::clamp(finite * fullScale, -fullScale, fullScale - 1)));
    });
    return converted;
}

std::vector<float> toFloat(std::span<const std::int16_t> samples)
{
    std::vector<float> converted(samples.size());
    std::transform(samples.begin(), samples.end(), converted.begin(),
        [](std::int16_t sample) { return static_cast<float>(sample) / fullScale; });
    return converted;
}

} // namespace quorvell
