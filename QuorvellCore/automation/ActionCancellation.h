// SPDX-License-Identifier: MIT
// Tells a running action to stop.
#pragma once

#include <mutex>

namespace quorvell {

/// Shared between the action and whoever cancels it; any thread.
class ActionCancellation {
public:
    bool isCancelled() const;
    void cancel();

private:
    mutable std::mutex m_lock;
    bool m_isCancelled = false;
};

} // namespace quorvell
