// SPDX-License-Identifier: MIT
#include "Media/audio/MemorySource.h"

#include <algorithm>

namespace quorvell {

std::size_t MemorySource::read(std::uint64_t offset, std::span<std::uint8_t> into) const
{
    if (offset >= m_bytes.size())
        return 0;
    const auto rest = m_bytes.subspan(offset);
    const auto taken = rest.first(std::min(rest.size(), into.size()));
    std::copy(taken.begin(), taken.end(), into.begin());
    return taken.size();
}

} // namespace quorvell
