#pragma once

#include "Quorvell/session/LiveClosure.h"
#include "QuorvellCore/live/wire/LiveServerEvent.h"

#include <string>

namespace quorvell {

/// What a live connection reports. The connection must outlive the call.
class LiveConnectionObserver {
public:
    virtual ~LiveConnectionObserver() = default;

    virtual void liveEventReceived(const LiveServerEvent& event) = 0;
    /// The model's answer in writing, beside or instead of the voice.
    virtual void liveReplyWritten(const std::string& text) = 0;
    /// Once, and nothing after it.
    virtual void liveConnectionClosed(const LiveClosure& closure) = 0;
};

} // namespace quorvell
