// SPDX-License-Identifier: MIT
// Where Gemini live sessions are opened.
#pragma once

#include "QuorvellCore/live/wire/transport/ServiceAddress.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Pure: the request is a value.
struct GeminiLiveEndpoint {
    static constexpr std::string_view path =
        "/ws/google.ai.generativelanguage.v1beta.GenerativeService.BidiGenerateContent";
    static constexpr std::string_view defaultHost = "generativelanguage.googleapis.com";
    static constexpr std::string_view keyHeader = "x-goog-api-key"; ///< Not in the address, which logs may show.

    ServiceAddress address{std::string(defaultHost), ServiceAddress::Security::tls};

    /// From an address in the settings, as ServiceAddress::create.
    static std::optional<GeminiLiveEndpoint> create(std::string_view address);

    /// The upgrade to a WebSocket.
    WebRequest request(std::string_view apiKey) const;

    bool operator==(const GeminiLiveEndpoint&) const = default;
};

} // namespace quorvell
