// SPDX-License-Identifier: MIT
// One tool call of the model.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// `args` is always a JSON object.
struct LiveFunctionCall {
    static constexpr std::string_view cutOffKey = "_cut_off";

    std::string id;
    std::string name;
    Json args = Json::object();

    /// From the arguments' JSON text: empty text is {}; text that does not parse to an object, or a call that the
    /// backend marked incomplete, carries cutOffKey.
    static LiveFunctionCall fromArgumentsText(
        std::string id, std::string name, std::string_view argumentsText, bool incomplete);

    std::optional<std::string> string(std::string_view key) const;
    /// An integer, a double or a numeric string.
    std::optional<double> number(std::string_view key) const;
    bool wasCutOff() const;

    bool operator==(const LiveFunctionCall&) const = default;
};

} // namespace quorvell
