// SPDX-License-Identifier: MIT
// What a Gemini live session is opened with.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace quorvell {

/// An absent option is not sent.
struct LiveSetupOptions {
    static constexpr int usualSilenceMs = 500;

    std::string model; ///< Without the "models/" that stands before it on the wire.
    std::string voiceName;
    std::string systemInstruction;
    Json tools = Json::array(); ///< Groups {"functionDeclarations": [...]}, objects only.
    int silenceDurationMs = usualSilenceMs; ///< This much quiet ends the user's turn.
    std::optional<std::string> resumptionHandle; ///< Of an earlier connection of the same conversation.
    std::optional<std::string> thinkingLevel;

    bool operator==(const LiveSetupOptions&) const = default;
};

} // namespace quorvell
