// SPDX-License-Identifier: MIT
// Where the live service is and what opens it.
#pragma once

#include "Quorvell/connections/access/ServiceLine.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"

#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

/// The key is never printed and never logged.
struct LiveAccess {
    enum class Place { hosted, onDevice };

    OpenAILiveEndpoint endpoint; ///< Host and security hold for every protocol.
    std::string key;
    Place place = Place::hosted;
    std::string_view keyName = "OPENAI_API_KEY"; ///< Where the user set the key.
    std::shared_ptr<ServiceLine> line{}; ///< Where there is one, the host is only a name. Each holder may connect.

    ServiceAddress address() const { return {endpoint.host, endpoint.security}; }

    bool operator==(const LiveAccess&) const = default;
};

} // namespace quorvell
