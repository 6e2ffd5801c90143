// SPDX-License-Identifier: MIT
// One request over HTTP and its answer, piece by piece.
#pragma once

#include "Quorvell/connections/life/ConnectionFailure.h"

#include <QtGlobal>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string_view>

namespace quorvell {

/// Destroying it cancels it. Main thread.
class WebExchange {
public:
    /// Each may destroy the exchange. Either `ended` or `failed` comes, once; a refusal is a failure with its body.
    struct Reports {
        std::function<void(std::string_view bytes)> received{};
        std::function<void()> ended{};
        std::function<void(const ConnectionFailure& failure)> failed{};
    };
    struct Limits {
        std::chrono::milliseconds toAnswer{20'000}; ///< Until the first byte of the answer.
        std::chrono::milliseconds silence{20'000}; ///< Between two pieces of it.
        std::size_t bytes = 16 * 1024 * 1024;
    };

    static constexpr std::size_t largestRefusal = 64 * 1024;
    /// Of an answer, in one turn of the event loop: whatever a service sends, everybody else has a turn too.
    static constexpr qint64 mostAtOnce = 16 * 1024;

    virtual ~WebExchange() = default;
};

} // namespace quorvell
