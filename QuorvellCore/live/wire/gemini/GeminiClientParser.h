// SPDX-License-Identifier: MIT
// Reads what a client sends to a Gemini live session.
#pragma once

#include "QuorvellCore/live/wire/gemini/GeminiClientMessage.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string_view>

namespace quorvell {

/// Everything is bounded; what cannot be acted on is Malformed. A message has one member; of several the first in the
/// order setup, realtimeInput, clientContent, toolResponse counts, and of a realtimeInput's the first in the order
/// audio, video, audioStreamEnd.
struct GeminiClientParser {
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};
    static constexpr std::size_t maximumTools = 256; ///< Declarations in all groups together.
    static constexpr std::size_t maximumTurns = 256; ///< In one clientContent.
    static constexpr std::size_t maximumResponses = 64;
    static constexpr int minimumSampleRate = 8000;
    static constexpr int maximumSampleRate = 48000;
    static constexpr int maximumSilenceMs = 10'000;

    static GeminiClientMessage parse(std::string_view message);
};

} // namespace quorvell
