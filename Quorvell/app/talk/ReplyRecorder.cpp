// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/ReplyRecorder.h"

namespace quorvell {

void ReplyRecorder::play(std::span<const std::uint8_t> pcm)
{
    if (m_samples.empty() && pcm.size() >= 2)
        m_began();
    for (std::size_t index = 0; index + 1 < pcm.size() && m_samples.size() < mostSamples; index += 2)
        m_samples.push_back(static_cast<std::int16_t>(pcm[index] | pcm[index + 1] << 8));
}

} // namespace quorvell
