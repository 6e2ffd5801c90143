// SPDX-License-Identifier: MIT
// The port through which deciders reach their services: one JSON object out, one back.
#pragma once

#include "QuorvellCore/automation/engine/http/DecisionError.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <stop_token>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

/// Called from several threads at once, never from one that must not wait.
class DecisionHTTP {
public:
    virtual ~DecisionHTTP() = default;

    /// Waits for the answer: the JSON of one with a status of 2xx, within `timeout` for all of it. Returns soon after
    /// `stop` is asked for.
    virtual std::variant<Json, DecisionError> post(const std::string& url,
        const std::vector<std::pair<std::string, std::string>>& headers, const Json& body,
        std::chrono::milliseconds timeout, std::stop_token stop) = 0;
};

} // namespace quorvell
