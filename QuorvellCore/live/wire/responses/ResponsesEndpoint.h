// SPDX-License-Identifier: MIT
// Where typed conversations are answered.
#pragma once

#include "QuorvellCore/live/wire/responses/ResponsesRequest.h"
#include "QuorvellCore/live/wire/transport/ServiceAddress.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Pure: the request is a value. A refusal with 400 or 403 is judged by OpenAILiveEndpoint::refusedSetting.
struct ResponsesEndpoint {
    static constexpr std::string_view path = "/v1/responses";
    static constexpr std::string_view defaultHost = "api.openai.com";

    ServiceAddress address{std::string(defaultHost), ServiceAddress::Security::tls};

    /// From an address in the settings, as ServiceAddress::create.
    static std::optional<ResponsesEndpoint> create(std::string_view address);

    /// A POST that is answered by a stream of events. The time-out is for the time without any byte.
    WebRequest request(std::string_view apiKey, const ResponsesRequest& question) const;

    bool operator==(const ResponsesEndpoint&) const = default;
};

} // namespace quorvell
