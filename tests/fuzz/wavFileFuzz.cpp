// SPDX-License-Identifier: MIT
// Any bytes are a recording, or refused with a sentence; never a crash, never more than the longest recording.
#include "Media/audio/WavFile.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int rateHz = 24000;
    constexpr auto mostSamples = std::chrono::seconds(quorvell::WavFile::longestRecording).count() * rateHz;
    const auto reading = quorvell::WavFile::read(std::span(data, size), rateHz);
    if (reading.samples.has_value() == !reading.problem.empty())
        std::abort();
    if (reading.samples
        && (reading.samples->empty() || static_cast<long>(reading.samples->size()) > mostSamples + rateHz))
        std::abort();
    return 0;
}
