// SPDX-License-Identifier: MIT
// What the server of a live session tells its client; the counterpart of OpenAILiveParser. Pure builders.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIErrorReport.h"
#include "QuorvellCore/text/Json.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

struct OpenAILiveServerMessage {
    static Json sessionStarted(std::string_view sessionID);
    static Json sessionClosed(std::string_view reason); ///< Such as "client_requested".

    static Json outputAudioDelta(std::span<const std::uint8_t> pcm);
    /// The very text of dumpJson(outputAudioDelta(pcm)), without the JSON value in between.
    static std::string outputAudioDeltaText(std::span<const std::uint8_t> pcm);
    static Json outputTranscriptDelta(std::string_view text);
    static Json inputTranscriptDelta(std::string_view text);

    static Json delegationCreated(std::string_view delegationID);
    /// Wraps an event made by OpenAIResponseEvent.
    static Json responseEvent(Json event);

    static Json usageUpdated(std::optional<double> seconds, std::optional<double> contextRatio);
    static Json error(const OpenAIErrorReport& report);
};

} // namespace quorvell
