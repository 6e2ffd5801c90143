// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/gate/PCMChunker.h"

#include <utility>

namespace quorvell {

std::vector<AudioChunk> PCMChunker::append(std::span<const std::uint8_t> data)
{
    buffer.insert(buffer.end(), data.begin(), data.end());
    std::vector<AudioChunk> chunks;
    if (chunkBytes == 0)
        return chunks;
    std::span<const std::uint8_t> rest = buffer;
    for (; rest.size() >= chunkBytes; rest = rest.subspan(chunkBytes)) {
        const auto chunk = rest.first(chunkBytes);
        chunks.push_back({Bytes(chunk.begin(), chunk.end())});
    }
    buffer.erase(buffer.begin(), buffer.end() - static_cast<std::ptrdiff_t>(rest.size()));
    return chunks;
}

std::optional<AudioChunk> PCMChunker::flush()
{
    if (buffer.empty())
        return std::nullopt;
    return AudioChunk{std::exchange(buffer, {})};
}

} // namespace quorvell
