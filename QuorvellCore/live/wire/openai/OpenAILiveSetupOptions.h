// SPDX-License-Identifier: MIT
// What a live session with a voice model and its delegated backend is opened with.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// An absent option is not sent.
struct OpenAILiveSetupOptions {
    std::string model; ///< The voice model.
    std::string voice; ///< One of OpenAILiveMessage::voices.
    std::string instructions; ///< For the voice model.
    std::string backendModel; ///< The model that the voice delegates to; it alone sees tools.
    std::string backendInstructions;
    Json tools = Json::array(); ///< Tool declarations of the backend, objects only.
    std::optional<std::string> reasoningEffort; ///< "none" turns reasoning, and with it the summary, off.
    std::optional<std::string> reasoningSummary;
    std::optional<std::string> serviceTier;
    std::optional<std::string> verbosity;
    std::optional<std::int64_t> maxOutputTokens;
    int sampleRate = 24000; ///< Of the PCM sent and received, Hz.
    std::vector<LiveHistoryEntry> history; ///< Oldest first; seeds a fresh session.

    bool operator==(const OpenAILiveSetupOptions&) const = default;
};

} // namespace quorvell
