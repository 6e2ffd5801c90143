// SPDX-License-Identifier: MIT
// Cuts a stream of sound, delivered in any sizes, into chunks of one size.
#pragma once

#include "QuorvellCore/live/gate/AudioChunk.h"
#include "QuorvellCore/text/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quorvell {

struct PCMChunker {
    std::size_t chunkBytes = 0; ///< 0 never cuts.
    Bytes buffer; ///< Less than one chunk.

    /// Every whole chunk that is there now, in order.
    [[nodiscard]] std::vector<AudioChunk> append(std::span<const std::uint8_t> data);
    /// The remainder, if there is one.
    [[nodiscard]] std::optional<AudioChunk> flush();

    bool operator==(const PCMChunker&) const = default;
};

} // namespace quorvell
