// SPDX-License-Identifier: MIT
// The library's own threads and what makes its objects.
#pragma once

#include "Media/webrtc/CallAudio.h"
#include "Media/webrtc/WebRTCPeerOptions.h"

#include <memory>

namespace rtc {
class Thread;
}
namespace webrtc {
class PeerConnectionFactoryInterface;
}

namespace quorvell {

/// Each call has one: its sound goes through `audio`, driven by a clock thread that ticks every 10 ms.
class CallEngine {
public:
    CallEngine(WebRTCPeerOptions::Reach reach, CallAudio& audio);
    /// Everything made by the factory must be gone.
    ~CallEngine();

    /// Null when the library could not be started.
    webrtc::PeerConnectionFactoryInterface* factory();
    rtc::Thread& signalling();
    rtc::Thread& network();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
