// SPDX-License-Identifier: MIT
// Leaves a service alone for a while that does not answer.
#pragma once

#include <chrono>
#include <optional>

namespace quorvell {

/// A value; the time is whatever clock its caller goes by.
struct PimBreaker {
    static constexpr int failuresToOpen = 3; ///< In a row.
    static constexpr std::chrono::seconds pause{60};

    int failures = 0;
    std::optional<std::chrono::steady_clock::time_point> openUntil{};

    bool allows(std::chrono::steady_clock::time_point now) const;
    /// Answered means that a usable reply came back, whatever it says.
    void record(bool answered, std::chrono::steady_clock::time_point now);

    bool operator==(const PimBreaker&) const = default;
};

} // namespace quorvell
