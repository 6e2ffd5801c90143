// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"

#include <utility>

namespace quorvell {

std::optional<GeminiLiveEndpoint> GeminiLiveEndpoint::create(std::string_view address)
{
    auto found = ServiceAddress::create(address);
    return found ? std::optional(GeminiLiveEndpoint{std::move(*found)}) : std::nullopt;
}

WebRequest GeminiLiveEndpoint::request(std::string_view apiKey) const
{
    return {WebRequest::Method::get, address.socketUrl(path), {{std::string(keyHeader), std::string(apiKey)}}, {},
        std::chrono::seconds(60)};
}

} // namespace quorvell
