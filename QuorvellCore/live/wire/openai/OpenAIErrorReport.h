// SPDX-License-Identifier: MIT
// An "error" event as the server states it.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct OpenAIErrorReport {
    std::string type = "invalid_request_error"; ///< Or "server_error".
    std::string code; ///< Snake case, such as "response_in_progress".
    std::string message; ///< A sentence that says what to do.
    std::optional<std::string> clientEventID; ///< The client's message that it is about.

    bool operator==(const OpenAIErrorReport&) const = default;
};

} // namespace quorvell
