// SPDX-License-Identifier: MIT
// A stretch of microphone sound as it travels: 16-bit little-endian mono, 40 ms in a session.
#pragma once

#include "QuorvellCore/text/Bytes.h"

namespace quorvell {

struct AudioChunk {
    Bytes pcm;

    bool operator==(const AudioChunk&) const = default;
};

} // namespace quorvell
