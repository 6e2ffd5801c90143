// SPDX-License-Identifier: MIT
// A call between two peers of the WebRTC library with nothing of ours around it: what ours is measured against.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

namespace quorvell {

/// Two peers with threads and a clock each, as in two programs; they meet on the loopback network, and each hands its
/// description to the other as soon as it holds an address, without a thread in between. The caller sounds from the
/// first moment on.
class BareCall {
public:
    struct Times {
        std::chrono::steady_clock::duration toOpen; ///< From the making of the peers until texts can be sent both ways.
        std::chrono::steady_clock::duration toSound; ///< From there until the first sound of the caller is heard.
    };

    BareCall();
    ~BareCall();
    BareCall(const BareCall&) = delete;
    BareCall& operator=(const BareCall&) = delete;

    /// Once, at once after it was made. Nothing when the call does not come about within ten seconds.
    std::optional<Times> connect();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
