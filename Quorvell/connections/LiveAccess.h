#pragma once

#include "QuorvellCore/live/wire/OpenAILiveEndpoint.h"

#include <string>
#include <string_view>

namespace quorvell {

/// Where the live service is and what opens it. The key is never printed and never logged.
struct LiveAccess {
    enum class Place { hosted, onDevice };

    OpenAILiveEndpoint endpoint; ///< Host and security hold for every protocol.
    std::string key;
    Place place = Place::hosted;
    std::string_view keyName = "OPENAI_API_KEY"; ///< Where the user set the key.

    ServiceAddress address() const { return {endpoint.host, endpoint.security}; }

    bool operator==(const LiveAccess&) const = default;
};

} // namespace quorvell
