#pragma once

#include <cstdint>

namespace quorvell {

/// What one conversation has used so far.
struct SessionUsage {
    std::int64_t tokens = 0;
    double billedSeconds = 0;
    double contextRatio = 0; ///< 0 to 1.
    std::int64_t microphoneChunks = 0; ///< Sent, of MicrophoneStream::chunkLength each.

    bool operator==(const SessionUsage&) const = default;
};

} // namespace quorvell
