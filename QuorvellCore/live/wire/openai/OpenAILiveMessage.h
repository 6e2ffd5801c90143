// SPDX-License-Identifier: MIT
// What the client tells a live session. Pure builders: values in, JSON objects out, keys in the order of the protocol.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIAppendIDs.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"
#include "QuorvellCore/live/wire/vocabulary/LiveImage.h"
#include "QuorvellCore/text/Json.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct OpenAILiveMessage {
    /// Whether the session object says which PCM the socket carries. Over WebRTC the peers negotiate it themselves.
    enum class AudioFormat { undeclared, declared };

    static constexpr int sampleRate = 24000; ///< Of input_audio.append, Hz.
    static constexpr std::array<std::string_view, 10> voices = {
        "marin", "cedar", "alloy", "ash", "ballad", "coral", "echo", "sage", "shimmer", "verse"};

    static Json session(const OpenAILiveSetupOptions& options, AudioFormat format);
    static Json backend(const OpenAILiveSetupOptions& options);

    static Json sessionStart(const OpenAILiveSetupOptions& options, AudioFormat format);
    static Json close();

    static Json audio(std::span<const std::uint8_t> pcm);
    /// The very text of dumpJson(audio(pcm)), without the JSON value in between: sent 25 times a second.
    static std::string audioText(std::span<const std::uint8_t> pcm);

    static Json instructions(std::string_view text, const OpenAIAppendIDs& ids = {});
    static Json commentary(std::string_view text, const OpenAIAppendIDs& ids = {});
    static Json thinking(std::string_view text, const OpenAIAppendIDs& ids = {});
    static Json append(std::string_view type, std::string_view text, const OpenAIAppendIDs& ids = {});

    /// A user message for the backend, with a picture if one is given.
    static Json backendMessage(std::string_view text, const std::optional<LiveImage>& image = std::nullopt,
        const std::optional<std::string>& eventID = std::nullopt);
    /// The result of a tool call, a JSON text. A picture follows as a user message of its own, so two messages may
    /// come back. Give that second one to OpenAIBackendFlow::message before the first to ::output: it then goes out
    /// between the result and the request for an answer.
    static std::vector<Json> functionOutput(std::string_view callID, std::string_view output = "{}",
        const std::optional<LiveImage>& image = std::nullopt, std::string_view imageText = {});
    static Json itemCreate(Json item, const std::optional<std::string>& eventID = std::nullopt);
    static Json responseCreate(const std::optional<std::string>& eventID = std::nullopt);
};

} // namespace quorvell
