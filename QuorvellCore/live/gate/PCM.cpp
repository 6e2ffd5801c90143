// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/gate/PCM.h"

#include <algorithm>
#include <cmath>

namespace quorvell {

namespace {

constexpr std::size_t sampleBytes = 2;
constexpr float floatPerUnit = 1.0f / 32768.0f; // exact, a power of two
constexpr float unitsPerFloat = 32767.0f;
constexpr float levelPerRms = 4.0f;

std::size_t sampleCount(std::span<const std::uint8_t> data)
{
    return data.size() / sampleBytes;
}

std::int16_t sampleAt(std::span<const std::uint8_t> data, std::size_t index)
{
    const unsigned low = data[index * sampleBytes];
    const unsigned high = data[index * sampleBytes + 1];
    return static_cast<std::int16_t>(high << 8 | low);
}

/// The sum is kept in double so that the order of a thousand samples does not show; the level itself is a float.
float levelOf(double sumOfSquares, std::size_t count)
{
    if (count == 0)
        return 0.0f;
    const double rms = std::sqrt(sumOfSquares / static_cast<double>(count));
    return std::min(static_cast<float>(rms) * levelPerRms, 1.0f);
}

} // namespace

std::vector<float> PCM::int16LEToFloat(std::span<const std::uint8_t> data)
{
    std::vector<float> samples(sampleCount(data));
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = static_cast<float>(sampleAt(data, index)) * floatPerUnit;
    return samples;
}

Bytes PCM::floatToInt16LE(std::span<const float> samples)
{
    Bytes data(samples.size() * sampleBytes);
    std::uint8_t* out = data.data();
    for (const float sample : samples) {
        const float clamped = std::isnan(sample) ? 0.0f : std::clamp(sample, -1.0f, 1.0f);
        const auto units = static_cast<std::uint16_t>(static_cast<std::int16_t>(clamped * unitsPerFloat));
        *out++ = static_cast<std::uint8_t>(units & 0xff);
        *out++ = static_cast<std::uint8_t>(units >> 8);
    }
    return data;
}

float PCM::level(std::span<const float> samples)
{
    double sum = 0;
    for (const float sample : samples) {
        if (!std::isnan(sample))
            sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return levelOf(sum, samples.size());
}

float PCM::levelOfInt16LE(std::span<const std::uint8_t> data)
{
    const std::size_t count = sampleCount(data);
    double sum = 0;
    for (std::size_t index = 0; index < count; ++index) {
        const double sample = static_cast<double>(sampleAt(data, index)) * static_cast<double>(floatPerUnit);
        sum += sample * sample;
    }
    return levelOf(sum, count);
}

bool PCM::isSilent(std::span<const std::uint8_t> data, int peak)
{
    for (std::size_t index = 0; index < sampleCount(data); ++index) {
        const int sample = sampleAt(data, index); // an int: the opposite of -32768 is no 16-bit value
        if (sample > peak || -sample > peak)
            return false;
    }
    return true;
}

} // namespace quorvell
