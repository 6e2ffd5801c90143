// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/SoundQuality.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t frameSamples = 512; ///< 32 ms.
constexpr std::size_t leastFrames = 16;
/// In decibels. Speech without noise has 35 and more; with pink noise 15 dB below it 19.
constexpr double leastRange = 21;
/// Of hissing sounds above 5.2 kHz to speech. Five voices have -46 at least, the same over a telephone -50 at most.
constexpr double leastUpper = -48;

/// Lets pass what is above 5.2 kHz: far enough from 4 kHz for what telephones leave there to be gone.
class UpperHalf {
public:
    double next(double value)
    {
        for (Section& section : m_sections)
            value = section.next(value);
        return value;
    }

private:
    /// Direct form II, transposed.
    struct Section {
        double b0, b1, b2, a1, a2;
        double first = 0, second = 0;
        double next(double in)
        {
            const double out = b0 * in + first;
            first = b1 * in - a1 * out + second;
            second = b2 * in - a2 * out;
            return out;
        }
    };
    static Section highPass(double quality)
    {
        const double turn = 2 * std::numbers::pi * 5200.0 / 16000.0;
        const double alpha = std::sin(turn) / (2 * quality);
        const double cosine = std::cos(turn);
        const double a0 = 1 + alpha;
        return {(1 + cosine) / 2 / a0, -(1 + cosine) / a0, (1 + cosine) / 2 / a0, -2 * cosine / a0, (1 - alpha) / a0};
    }

    Section m_sections[3] = {
        highPass(0.518), highPass(0.707), highPass(1.932)}; ///< A Butterworth filter of sixth order.
};

double decibels(double power)
{
    return 10 * std::log10(std::max(power, 1.0)); // A sample of 1 is the quietest sound there is.
}

double share(std::vector<double> levels, double place)
{
    const auto at = levels.begin() + static_cast<std::ptrdiff_t>(place * static_cast<double>(levels.size() - 1));
    std::ranges::nth_element(levels, at);
    return *at;
}

} // namespace

SoundQuality soundQualityOf(std::span<const std::int16_t> samples)
{
    std::vector<double> levels;
    std::vector<double> upperLevels;
    UpperHalf upperHalf;
    for (; samples.size() >= frameSamples; samples = samples.subspan(frameSamples)) {
        double power = 0;
        double upperPower = 0;
        for (const std::int16_t sample : samples.first(frameSamples)) {
            const double upper = upperHalf.next(sample);
            power += static_cast<double>(sample) * sample;
            upperPower += upper * upper;
        }
        levels.push_back(decibels(power / frameSamples));
        upperLevels.push_back(decibels(upperPower / frameSamples));
    }
    if (levels.size() < leastFrames)
        return SoundQuality::good;
    const double loud = share(levels, 0.9);
    if (loud - share(levels, 0.08) < leastRange)
        return SoundQuality::noisy;
    return share(upperLevels, 0.95) - loud < leastUpper ? SoundQuality::narrow : SoundQuality::good;
}

} // namespace quorvell
