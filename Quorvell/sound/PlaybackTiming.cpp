// SPDX-License-Identifier: MIT
#include "Quorvell/sound/PlaybackTiming.h"

#include <algorithm>

namespace quorvell {

std::int64_t PlaybackTiming::unplayed(std::int64_t given, int sampleRateHz) const
{
    // Behind the last sample of a queue that ran dry the device has silence, which nobody waits for.
    const auto soundInDevice = isPlaying ? deviceQueue : deviceQueue - silence;
    const std::int64_t inDevice =
        std::max(soundInDevice, std::chrono::microseconds::zero()).count() * sampleRateHz / 1'000'000;
    const std::int64_t passed = std::max(age, std::chrono::microseconds::zero()).count() * sampleRateHz / 1'000'000;
    return std::clamp(queuedSamples + inDevice - passed, std::int64_t{0}, given);
}

} // namespace quorvell
