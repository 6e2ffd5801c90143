// SPDX-License-Identifier: MIT
// Sees to it that a program that is to end does end, though a disk or a device may not answer any more.
#pragma once

#include <chrono>

namespace quorvell {

/// The way out waits for threads: one that saves notes must not be cut short, and one that a dead network folder holds
/// never comes back. So it gets this long. Whatever was saved stays whole, since files are replaced, not overwritten.
struct EndDeadline {
    static constexpr std::chrono::seconds patience{15};

    /// From now on; a later call takes its place. May be called from a signal handler.
    static void begin(std::chrono::seconds limit = patience) noexcept;
    /// The program goes on.
    static void cancel() noexcept;
};

} // namespace quorvell
