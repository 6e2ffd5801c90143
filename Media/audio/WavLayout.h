// SPDX-License-Identifier: MIT
// Where a WAV file keeps its sound.
#pragma once

#include "Media/audio/ByteSource.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace quorvell {

/// Only the chunks that are needed to decode it are kept; all others (titles, cue points, whatever else a program left
/// there) are stepped over and never reach the decoder, which can be made to hang by some of them.
struct WavLayout {
    static constexpr int mostChunks = 1000; ///< Stepped over before the sound.
    static constexpr std::uint32_t largestFormatChunk = 1024; ///< Bytes; real ones have 16 to 50.

    /// "RIFF", the format and what the decoder needs besides, up to the first byte of sound.
    std::vector<std::uint8_t> header;
    std::uint64_t dataStart = 0; ///< In the source.
    std::uint32_t dataSize = 0; ///< Bytes that are really there.
    bool breaksOff = false; ///< Fewer of them than the file says.

    /// Nothing when the bytes are no RIFF or RF64 file, or have no format or no sound chunk.
    static std::optional<WavLayout> find(const ByteSource& source);

    /// For forms that the decoder reads as they are.
    static WavLayout whole(const ByteSource& source);

    bool operator==(const WavLayout&) const = default;
};

} // namespace quorvell
