// SPDX-License-Identifier: MIT
// One thing to send: a chunk, or the mark that speech has ended.
#pragma once

#include "QuorvellCore/live/gate/AudioChunk.h"

#include <optional>
#include <utility>

namespace quorvell {

struct MicGateOutput {
    std::optional<AudioChunk> chunk; ///< Absent: the end mark.

    static MicGateOutput sound(AudioChunk chunk) { return {std::move(chunk)}; }
    static MicGateOutput endMark() { return {}; }

    bool isEndMark() const { return !chunk.has_value(); }

    bool operator==(const MicGateOutput&) const = default;
};

} // namespace quorvell
