// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/ReplyRecorder.h"

#include "Media/audio/SampleBytes.h"

#include <algorithm>

namespace quorvell {

void ReplyRecorder::play(std::span<const std::uint8_t> pcm)
{
    if (m_samples.empty() && pcm.size() >= 2)
        m_began();
    const auto samples = samplesOfBytes(pcm);
    const std::size_t count = std::min(samples.size(), mostSamples - m_samples.size());
    m_samples.insert(m_samples.end(), samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count));
}

} // namespace quorvell
