// SPDX-License-Identifier: MIT
// Reads what a client sends to a server.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveClientMessage.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Everything is bounded; what cannot be acted on becomes Malformed.
struct OpenAILiveClientParser {
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};

    static OpenAILiveClientMessage parse(std::string_view message);

    /// The options that a session object states. On failure nothing, and `problem` says in a sentence what is wrong.
    [[nodiscard]] static std::optional<OpenAILiveSetupOptions> parseSession(const Json& session, std::string& problem);
};

} // namespace quorvell
