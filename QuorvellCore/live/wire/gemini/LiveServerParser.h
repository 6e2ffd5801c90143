// SPDX-License-Identifier: MIT
// Reads what a Gemini live session sends.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"
#include "QuorvellCore/text/Json.h"

#include <string_view>
#include <vector>

namespace quorvell {

/// Anything malformed, unknown or lacking a required payload gives no event.
struct LiveServerParser {
    /// A message larger or deeper than this is no event.
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};

    static constexpr std::size_t longestID = 512; ///< Bytes, and of a tool's name.
    static constexpr std::size_t mostCalls = 64; ///< In one message; the others are no calls.

    /// One message may hold several facts. Whatever the order of its keys, they come as: set up, what the user said,
    /// sound, what the model said, interrupted, generation complete, turn complete, tool calls, cancellations, go
    /// away, resumption handle, usage.
    static std::vector<LiveServerEvent> parse(std::string_view message);
};

} // namespace quorvell
