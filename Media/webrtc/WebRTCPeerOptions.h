// SPDX-License-Identifier: MIT
// How one peer is set up.
#pragma once

#include <chrono>

namespace quorvell {

struct WebRTCPeerOptions {
    static constexpr int sampleRate = 24000; ///< Of the sound both ways.

    enum class Role { offers, answers };
    /// Where the other side may be.
    enum class Reach { network, thisComputer, both };
    /// What happens to sound that waits because it was given in a burst.
    enum class Backlog {
        kept, ///< A spoken reply keeps its pauses.
        caughtUp, ///< A microphone comes back to the present: quiet stretches are left out while anything waits.
    };

    Role role = Role::offers;
    Reach reach = Reach::network;
    Backlog backlog = Backlog::kept;
    std::chrono::milliseconds mostQueuedSound{5'000}; ///< What does not fit is refused.
    /// How long sound is still reported after the last that was audible: whoever judges by quiet needs to hear it.
    std::chrono::milliseconds quietReported{300};
    /// For finding this computer's first address; without one the description is of no use.
    std::chrono::milliseconds gathering{1'500};

    bool operator==(const WebRTCPeerOptions&) const = default;
};

} // namespace quorvell
