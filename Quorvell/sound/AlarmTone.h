// SPDX-License-Identifier: MIT
// The sound of an alarm, made sample by sample.
//
// Two notes a fifth apart, each four times in quick pairs, then a rest: 1.6 s in all. Every note is a sum of three
// harmonics under an envelope that rises in 8 ms and dies away, so that nothing clicks. The notes lie near 740 and
// 1110 Hz, where small loudspeakers are loud and old ears still hear well. The rest is there so that "stop" is heard.
// From the first ring on it grows louder by the same ratio each second, from a tenth to all within a minute: steps of
// gain are smaller than 0.1 % from sample to sample.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvell {

/// A value; allocates only when it is made. 16-bit mono at 24000 Hz.
class AlarmTone {
public:
    static constexpr int sampleRateHz = 24000;
    static constexpr int roundSamples = sampleRateHz * 8 / 5;
    static constexpr int riseSamples = sampleRateHz * 60;
    static constexpr float softest = 0.1F;
    static constexpr float loudest = 0.9F; ///< Of full scale.

    AlarmTone();

    void restart() { m_place = 0; }
    /// The next samples.
    void render(std::span<std::int16_t> samples);

private:
    float gain() const;

    std::vector<float> m_round; ///< One round at a peak of 1.
    std::int64_t m_place = 0; ///< Samples since the start.
};

} // namespace quorvell
