#include "QuorvellCore/live/wire/LiveEndpoint.h"

#include <utility>

namespace quorvell {

std::optional<LiveEndpoint> LiveEndpoint::create(std::string_view address)
{
    auto found = ServiceAddress::create(address);
    return found ? std::optional(LiveEndpoint{std::move(*found)}) : std::nullopt;
}

WebRequest LiveEndpoint::request(std::string_view apiKey) const
{
    return {WebRequest::Method::get, address.socketUrl(path), {{std::string(keyHeader), std::string(apiKey)}}, {},
        std::chrono::seconds(60)};
}

} // namespace quorvell
