// SPDX-License-Identifier: MIT
// Which models hold a conversation and how.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

/// Absent options are left to the service.
struct LiveModelSettings {
    std::string voiceModel = "gpt-live";
    std::string voice = "marin";
    std::string backendModel = "gpt-5"; ///< Also the one model of typed conversations.
    std::optional<std::string> reasoningEffort{};
    std::optional<std::string> reasoningSummary{};
    std::optional<std::string> serviceTier{};
    std::optional<std::string> verbosity{};
    std::optional<std::int64_t> maxOutputTokens{};

    // With a Gemini service
    std::string geminiModel = "gemini-live-2.5-flash-preview";
    std::string geminiVoice = "Kore";
    std::optional<std::string> geminiThinkingLevel{};

    bool operator==(const LiveModelSettings&) const = default;
};

} // namespace quorvell
