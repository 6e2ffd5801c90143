// SPDX-License-Identifier: MIT
// Has the main thread do what other threads hand over, a share of it in each turn of its event loop: however much
// comes, everybody else has a turn too.
#pragma once

#include <chrono>
#include <functional>

namespace quorvell {

struct FairPost {
    /// Of a turn, after which the rest waits for the next one.
    static constexpr std::chrono::milliseconds share{10};

    /// What takes actions from any thread and has them done in order. Every copy is the same queue.
    static std::function<void(std::function<void()>)> make();
};

} // namespace quorvell
