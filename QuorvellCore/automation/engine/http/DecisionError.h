// SPDX-License-Identifier: MIT
// Why a service that decides steps gave no answer.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct DecisionError {
    enum class Kind {
        cancelled, ///< Whoever asked did not want the answer any more.
        timedOut,
        unreachable, ///< No connection, or one that broke before the answer was whole.
        refused, ///< 401, 403: the key does not count.
        tooMany, ///< 429
        serverFault, ///< 5xx
        rejected, ///< Any other status but 2xx.
        tooLarge, ///< The answer is longer than what is read.
        malformed, ///< What came cannot be read as an answer.
    };

    Kind kind = Kind::malformed;
    int status = 0; ///< Of HTTP, where one came; else 0.
    std::string message{}; ///< One sentence for the user; never holds a key.
    std::optional<std::chrono::seconds> retryAfter{}; ///< Before that the service does not want to be asked again.

    bool operator==(const DecisionError&) const = default;
};

} // namespace quorvell
