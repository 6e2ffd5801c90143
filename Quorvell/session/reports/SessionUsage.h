// SPDX-License-Identifier: MIT
// What one conversation has used so far, over all its connections.
#pragma once

#include <cstdint>

namespace quorvell {

struct SessionUsage {
    std::int64_t tokens = 0; ///< As reported, summed up.
    std::int64_t peakTokens = 0; ///< The largest single report.
    double billedSeconds = 0;
    double contextRatio = 0; ///< 0 to 1, of the present connection.
    std::int64_t microphoneChunks = 0; ///< Sent, of MicrophoneStream::chunkLength each.
    std::int64_t imagesSent = 0;
    double voiceSeconds = 0; ///< Of the assistant's voice received.
    double connectedSeconds = 0; ///< With a live connection open for voice; what the daily limit counts.
    int dozes = 0;
    int prepared = 0; ///< Connections opened for a sound at rest, before its words were known.
    int reconnections = 0;
    int rotations = 0;

    /// Of microphone sound sent, in tenths of a second.
    std::int64_t webRTCMicTenths() const { return microphoneChunks * 4 / 10; }

    bool operator==(const SessionUsage&) const = default;
};

} // namespace quorvell
