#pragma once

#include "Quorvell/connections/LiveAccess.h"

#include <optional>
#include <string>

namespace quorvell {

/// What the user said about the live service, on the command line, in the environment and in the settings.
struct LiveEndpointSettings {
    /// One of: a hosted service, the service on this device, a sentence about what is wrong.
    struct Choice {
        std::optional<LiveAccess> hosted;
        bool isOnDevice = false;
        std::string problem;

        bool operator==(const Choice&) const = default;
    };

    std::optional<std::string> host; ///< "host", "host:port", or an address with wss, https, or (loopback) ws, http.
    std::optional<std::string> key;

    /// With a host or a key the hosted service, without either the one on this device.
    Choice choose() const;

    /// What is wrong with the host, in a sentence; nothing when all is well.
    static std::optional<std::string> hostProblem(const std::string& host);
};

} // namespace quorvell
