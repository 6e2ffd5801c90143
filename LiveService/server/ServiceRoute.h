// SPDX-License-Identifier: MIT
// Which of the service's doors a request knocks at, and whether it may come in. Pure.
#pragma once

#include "Http/HttpRequest.h"
#include "Http/HttpResponse.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct ServiceRoute {
    enum class Kind {
        openAISocket, ///< A live session over a WebSocket.
        openAICall, ///< One over WebRTC: the body holds the offer.
        geminiSocket,
        response, ///< A typed turn: the body holds the conversation.
    };

    static constexpr std::string_view sessions = "/v1/live/sessions";
    static constexpr std::string_view responses = "/v1/responses";

    std::optional<Kind> kind; ///< Absent when refused.
    HttpResponse refusal{};

    /// `token` is the key that the client must show.
    static ServiceRoute of(const HttpRequest& request, std::string_view token);
};

} // namespace quorvell
