// SPDX-License-Identifier: MIT
// Any bytes are a recording, or refused with a sentence; never a crash, never more than the longest recording.
#include "Media/audio/WavFile.h"
#include "fuzzing.h"

/// The sound library forgets 6 KiB of its Vorbis part when that refuses a head; nobody who plays a recording hands it
/// many.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:vorbis_info_init\n";
}

void quorvell::search(std::string_view text)
{
    constexpr int rateHz = 24000;
    constexpr auto mostSamples = std::chrono::seconds(WavFile::longestRecording).count() * rateHz;
    const auto reading = WavFile::read({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, rateHz);
    require(reading.samples.has_value() == reading.problem.empty());
    if (reading.samples)
        require(!reading.samples->empty() && static_cast<long>(reading.samples->size()) <= mostSamples + rateHz);
}
