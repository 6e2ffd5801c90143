// SPDX-License-Identifier: MIT
// What a client tells a Gemini live session, read back into values; the counterpart of LiveMessage.
#pragma once

#include "QuorvellCore/live/wire/gemini/LiveSetupOptions.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"
#include "QuorvellCore/text/Bytes.h"

#include <string>
#include <variant>
#include <vector>

namespace quorvell::gemini_client {

struct Setup {
    LiveSetupOptions options;
    bool operator==(const Setup&) const = default;
};
struct Audio {
    Bytes pcm; ///< 16-bit little-endian mono; whole samples.
    int sampleRate = 16000; ///< Hz.
    bool operator==(const Audio&) const = default;
};
struct Image {
    Bytes jpeg;
    bool operator==(const Image&) const = default;
};
struct AudioStreamEnd {
    bool operator==(const AudioStreamEnd&) const = default;
};
struct Content {
    std::vector<LiveHistoryEntry> turns; ///< Roles "user" and "assistant".
    bool isComplete = false; ///< The model is to answer.
    bool operator==(const Content&) const = default;
};
struct ToolResponse {
    std::vector<LiveFunctionResponse> responses;
    bool operator==(const ToolResponse&) const = default;
};
/// Nothing that could be acted on. The protocol has no event for it: close with code 1007 and the reason.
struct Malformed {
    std::string reason; ///< A sentence that names the field.
    bool operator==(const Malformed&) const = default;
};

} // namespace quorvell::gemini_client

namespace quorvell {

using GeminiClientMessage = std::variant<gemini_client::Setup, gemini_client::Audio, gemini_client::Image,
    gemini_client::AudioStreamEnd, gemini_client::Content, gemini_client::ToolResponse, gemini_client::Malformed>;

} // namespace quorvell
