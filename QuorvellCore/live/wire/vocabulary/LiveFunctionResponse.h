// SPDX-License-Identifier: MIT
// The answer to one tool call.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <string>

namespace quorvell {

/// `response` is always a JSON object.
struct LiveFunctionResponse {
    std::string id;
    std::string name;
    Json response = Json::object();

    bool operator==(const LiveFunctionResponse&) const = default;
};

/// How a tool's answer is to be voiced.
enum class LiveResponseScheduling {
    silent, ///< Not at all.
    whenIdle, ///< After the model has finished what it is saying.
    interrupt, ///< At once.
};

} // namespace quorvell
