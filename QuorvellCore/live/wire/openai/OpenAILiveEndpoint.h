// SPDX-License-Identifier: MIT
// Where live sessions are opened and with which requests. Pure: requests are values, answers are texts.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"
#include "QuorvellCore/live/wire/transport/ServiceAddress.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"
#include "QuorvellCore/live/wire/vocabulary/RefusedSetting.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// One service.
struct OpenAILiveEndpoint {
    using Security = ServiceAddress::Security;

    /// The answer to a session created for WebRTC.
    struct WebRTCAnswer {
        std::string sdp;
        std::string sessionID; ///< Empty when the session object has none.
        bool operator==(const WebRTCAnswer&) const = default;
    };

    static constexpr std::string_view path = "/v1/live/sessions";
    static constexpr std::string_view defaultHost = "api.openai.com";

    std::string host{defaultHost}; ///< With ":port" where it is not the scheme's own.
    Security security = Security::tls;

    /// From an address in the settings, as ServiceAddress::create.
    static std::optional<OpenAILiveEndpoint> create(std::string_view address);

    /// The upgrade to a WebSocket.
    WebRequest request(std::string_view apiKey) const;
    /// Creates a session whose sound travels over WebRTC.
    WebRequest webRTCRequest(
        std::string_view apiKey, const OpenAILiveSetupOptions& options, std::string_view offerSDP) const;
    /// Nothing when the session or the answer's SDP is missing, or that is out of bounds.
    static std::optional<WebRTCAnswer> webRTCAnswer(std::string_view body);

    /// Which option to drop before the session is asked for again, judged by the refusal's status and body.
    static RefusedSetting refusedSetting(int status, std::string_view body);

    bool operator==(const OpenAILiveEndpoint&) const = default;
};

} // namespace quorvell
