// SPDX-License-Identifier: MIT
// Converts a stream of mono samples from one rate to another, piece by piece, without clicks between the pieces.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quorvell {

/// Not thread safe; each stream has its own.
class Resampler {
public:
    enum class Quality { fast, best };

    static constexpr int lowestRateHz = 4000;
    static constexpr int highestRateHz = 384000;

    /// Rates outside the limits above are moved to the nearest limit.
    Resampler(int fromHz, int toHz, Quality quality = Quality::fast);
    ~Resampler();
    Resampler(Resampler&&) noexcept;
    Resampler& operator=(Resampler&&) noexcept;

    /// What can be given out so far. The filter holds back a few milliseconds until more arrives or `finish` is called.
    /// Samples lie between -1 and 1; one that is no number counts as silence.
    std::vector<float> process(std::span<const float> samples);
    std::vector<std::int16_t> process(std::span<const std::int16_t> samples);

    /// The rest. The next `process` starts a new stream.
    std::vector<float> finish();
    std::vector<std::int16_t> finishToInt16();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Rounded to 16 bits; what lies outside -1 to 1 is clipped.
std::vector<std::int16_t> toInt16(std::span<const float> samples);
std::vector<float> toFloat(std::span<const std::int16_t> samples);

} // namespace quorvell
