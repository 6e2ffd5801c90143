#pragma once

#include "QuorvellCore/live/wire/OpenAILiveEndpoint.h"

#include <string>

namespace quorvell {

/// Where the live service is and what opens it. The key is never printed and never logged.
struct LiveAccess {
    enum class Place { hosted, onDevice };

    OpenAILiveEndpoint endpoint;
    std::string key;
    Place place = Place::hosted;

    bool operator==(const LiveAccess&) const = default;
};

} // namespace quorvell
