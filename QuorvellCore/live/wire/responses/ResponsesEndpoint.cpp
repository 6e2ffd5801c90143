// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/responses/ResponsesEndpoint.h"

#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <utility>

namespace quorvell {

std::optional<ResponsesEndpoint> ResponsesEndpoint::create(std::string_view address)
{
    auto found = ServiceAddress::create(address);
    return found ? std::optional(ResponsesEndpoint{std::move(*found)}) : std::nullopt;
}

WebRequest ResponsesEndpoint::request(std::string_view apiKey, const ResponsesRequest& question) const
{
    return {WebRequest::Method::post, address.webUrl(path),
        {{"Authorization", "Bearer " + std::string(apiKey)}, {"Content-Type", "application/json"},
            {"Accept", std::string(ServerSentEvents::contentType)}},
        dumpJson(question.json()), std::chrono::seconds(120)};
}

} // namespace quorvell
