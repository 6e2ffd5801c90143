// SPDX-License-Identifier: MIT
// One question to the Responses service, answered as a stream.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIItem.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// An absent option is not sent. The service is asked to keep nothing, so `input` holds the whole conversation: with
/// its tool calls, each before its output.
struct ResponsesRequest {
    std::string model;
    std::string instructions;
    std::vector<OpenAIItem> input; ///< Oldest first.
    Json tools = Json::array(); ///< Tool declarations, objects only.
    std::optional<std::string> reasoningEffort{}; ///< "none" turns reasoning, and with it the summary, off.
    std::optional<std::string> reasoningSummary{};
    std::optional<std::string> serviceTier{};
    std::optional<std::string> verbosity{};
    std::optional<std::int64_t> maxOutputTokens{};
    std::optional<std::string> previousResponseID{};

    Json json() const;

    bool operator==(const ResponsesRequest&) const = default;
};

} // namespace quorvell
