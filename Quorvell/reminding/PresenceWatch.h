// SPDX-License-Identifier: MIT
// Tells when the user is back at the computer: it woke up, was unlocked, or was used again after a while.
#pragma once

#include <functional>

namespace quorvell {

/// Main thread.
class PresenceWatch {
public:
    virtual ~PresenceWatch() = default;

    virtual void onReturn(std::function<void()> cameBack) = 0;
    /// Looking for use after idleness costs a question every half minute, so it is done only while somebody waits.
    virtual void setWaiting(bool isWaiting) = 0;
};

} // namespace quorvell
