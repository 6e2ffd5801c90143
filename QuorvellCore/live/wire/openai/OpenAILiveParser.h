// SPDX-License-Identifier: MIT
// Reads what a server sends.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvell {

/// Anything malformed, unknown or lacking a required payload gives no event.
struct OpenAILiveParser {
    /// A message larger or deeper than this is no event.
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};

    /// Bytes of an id or a tool's name; what has a longer one is malformed.
    static constexpr std::size_t longestID = 512;

    /// One message of the session. A backend response's end may give up to three events.
    static std::vector<OpenAILiveEvent> parse(std::string_view message);
    /// One event of the delegated backend, without the "response.event" around it.
    static std::vector<OpenAILiveEvent> parseBackend(const Json& event);
};

} // namespace quorvell
