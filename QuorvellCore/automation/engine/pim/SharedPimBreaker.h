// SPDX-License-Identifier: MIT
// The one breaker of the selector's service, for all who ask that service with one key.
#pragma once

#include "QuorvellCore/automation/engine/pim/PimBreaker.h"

#include <functional>
#include <mutex>

namespace quorvell {

/// Any thread.
class SharedPimBreaker {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// `now` is called by one thread at a time.
    explicit SharedPimBreaker(Clock now);

    bool allows();
    void record(bool answered);
    PimBreaker value() const;

private:
    Clock m_now;
    mutable std::mutex m_lock;
    PimBreaker m_breaker;
};

} // namespace quorvell
