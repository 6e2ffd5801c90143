// SPDX-License-Identifier: MIT
// Whether an Ogg file (RFC 3533) is whole: its decoders pass over what is damaged or missing without a word.
#pragma once

#include "Media/audio/ByteSource.h"

#include <cstdint>

namespace quorvell {

struct OggPages {
    static constexpr std::uint64_t largestFile = 256 * 1024 * 1024; ///< Bytes; larger ones are not looked through.

    /// One page after another, each with the sum of its bytes, none missing, and the last one marked as the last.
    static bool areWhole(const ByteSource& source);
};

} // namespace quorvell
