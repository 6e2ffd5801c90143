// SPDX-License-Identifier: MIT
// How long reading calendars may go on, whatever they hold.
#pragma once

#include <chrono>
#include <stop_token>

namespace quorvell {

/// Asked between files and between events. Any thread.
struct Patience {
    using Clock = std::chrono::steady_clock;

    std::stop_token stop{};
    Clock::time_point until = Clock::time_point::max();

    bool isOver() const { return stop.stop_requested() || Clock::now() >= until; }
};

} // namespace quorvell
