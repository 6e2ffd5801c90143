// SPDX-License-Identifier: MIT
// One POST request with its bounds, as a value.
#pragma once

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Secrets.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct PostRequest {
    using Headers = std::vector<std::pair<std::string, std::string>>;

    static constexpr std::chrono::milliseconds longestTimeout = std::chrono::minutes(10);

    std::string body{};
    std::vector<std::string> headers{}; ///< "Name: value"
    Secrets secrets{}; ///< What may stand in the headers and nowhere else.
    std::chrono::steady_clock::time_point deadline{};

    /// Nothing when a header could begin another one or has no value, as with a key that was copied with a line break.
    static std::optional<PostRequest> create(const Headers& headers, const Json& body,
        std::chrono::milliseconds timeout, std::chrono::steady_clock::time_point now);

    /// What is left of its time, never below zero.
    std::chrono::milliseconds timeLeft(std::chrono::steady_clock::time_point now) const;
};

} // namespace quorvell
