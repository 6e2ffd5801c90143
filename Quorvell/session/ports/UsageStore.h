// SPDX-License-Identifier: MIT
// Keeps how long was spoken on each of the last days.
#pragma once

namespace quorvell {

/// Main thread.
class UsageStore {
public:
    virtual ~UsageStore() = default;

    /// Of spoken conversation in the user's present day.
    virtual double secondsToday() const = 0;
    virtual void addSeconds(double seconds) = 0;
};

} // namespace quorvell
