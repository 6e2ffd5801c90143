// SPDX-License-Identifier: MIT
// What the client tells a Gemini live session. Pure builders: values in, JSON objects out, keys in the order of the
// protocol. Each message is one text frame.
#pragma once

#include "QuorvellCore/live/wire/gemini/LiveSetupOptions.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"
#include "QuorvellCore/text/Json.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct LiveMessage {
    static constexpr std::string_view inputAudioMimeType = "audio/pcm;rate=16000";
    static constexpr int inputSampleRate = 16000; ///< Hz, of `audio`.
    static constexpr int outputSampleRate = 24000; ///< Hz, of what the model says.
    static constexpr std::string_view imageMimeType = "image/jpeg";
    static constexpr std::string_view modality = "AUDIO";
    static constexpr std::array<std::string_view, 8> voices = {
        "Kore", "Puck", "Charon", "Fenrir", "Aoede", "Leda", "Orus", "Zephyr"};

    /// The first message. Nothing else may be sent before the server's "setupComplete".
    static Json setup(const LiveSetupOptions& options);

    /// 16-bit little-endian mono at inputSampleRate.
    static Json audio(std::span<const std::uint8_t> pcm);
    /// The very text of dumpJson(audio(pcm)), without the JSON value in between: sent 25 times a second.
    static std::string audioText(std::span<const std::uint8_t> pcm);
    static Json image(std::span<const std::uint8_t> jpeg);
    static Json audioStreamEnd(); ///< The microphone has paused; sound may follow later.

    /// A user's turn that the model answers.
    static Json text(std::string_view text);
    /// A user's turn that the model only takes in.
    static Json note(std::string_view text);
    /// Asks for an answer to what the model was told so far.
    static Json answerNow();
    /// Earlier turns, which the model remembers without answering. Nothing when there is nothing to remember.
    static std::optional<Json> history(const std::vector<LiveHistoryEntry>& entries);

    static Json toolResponse(const std::vector<LiveFunctionResponse>& responses);
};

} // namespace quorvell
