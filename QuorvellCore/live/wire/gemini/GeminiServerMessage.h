// SPDX-License-Identifier: MIT
// What a Gemini live session tells its client; the counterpart of LiveServerParser. Pure builders.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/text/Json.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct GeminiServerMessage {
    static constexpr std::string_view audioMimeType = "audio/pcm;rate=24000";

    static Json setupComplete(std::string_view sessionID = {});

    static Json audio(std::span<const std::uint8_t> pcm);
    /// The very text of dumpJson(audio(pcm)), without the JSON value in between.
    static std::string audioText(std::span<const std::uint8_t> pcm);
    static Json inputTranscription(std::string_view text); ///< Delta.
    static Json outputTranscription(std::string_view text); ///< Delta.
    static Json interrupted();
    static Json generationComplete();
    static Json turnComplete();

    static Json toolCall(const std::vector<LiveFunctionCall>& calls);
    static Json toolCallCancellation(const std::vector<std::string>& ids);
    static Json goAway(std::chrono::milliseconds timeLeft);
    static Json resumptionUpdate(std::string_view handle); ///< An empty handle: cannot be resumed now.
    static Json usage(std::int64_t totalTokens);
};

} // namespace quorvell
