#pragma once

#include <mutex>

namespace quorvell {

/// Tells a running action to stop. Shared between the action and whoever cancels it; any thread.
class ActionCancellation {
public:
    bool isCancelled() const;
    void cancel();

private:
    mutable std::mutex m_lock;
    bool m_isCancelled = false;
};

} // namespace quorvell
