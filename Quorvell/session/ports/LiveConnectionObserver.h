// SPDX-License-Identifier: MIT
// What a live connection reports.
#pragma once

#include "Quorvell/session/ports/LiveClosure.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <string>

namespace quorvell {

/// The connection must outlive the call.
class LiveConnectionObserver {
public:
    virtual ~LiveConnectionObserver() = default;

    virtual void liveEventReceived(const LiveServerEvent& event) = 0;
    /// The model's answer in writing, beside or instead of the voice.
    virtual void liveReplyWritten(const std::string& text) = 0;
    /// A piece of the answer that liveReplyWritten gives whole later, for whoever shows it while it grows.
    virtual void liveReplyGrew(const std::string& delta) { static_cast<void>(delta); }
    /// Once, and nothing after it.
    virtual void liveConnectionClosed(const LiveClosure& closure) = 0;
};

} // namespace quorvell
