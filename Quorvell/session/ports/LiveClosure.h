// SPDX-License-Identifier: MIT
// Why a live connection is no more, or never came to be.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct LiveClosure {
    static constexpr int normal = 1000;
    static constexpr int abnormal = 1006; ///< The other side vanished without a word.

    int code = normal; ///< A WebSocket close code (1000 to 4999), or the HTTP status of a refusal.
    std::string reason{}; ///< What kind of end it was, in words of this program only: for the event log.
    bool mustUserAct = false; ///< Trying again changes nothing until the user has done something.
    std::string sentence{}; ///< For the user: what happened and what to do next. Empty after an orderly end.
    /// Set when the service is only busy: how long it asks to be left alone, zero when it names no time.
    std::optional<std::chrono::milliseconds> retryAfter{};

    bool operator==(const LiveClosure&) const = default;
};

} // namespace quorvell
