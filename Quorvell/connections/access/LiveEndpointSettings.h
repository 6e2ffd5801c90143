// SPDX-License-Identifier: MIT
// What the user said about the live service, on the command line, in the environment and in the settings.
#pragma once

#include "Quorvell/connections/access/LiveAccess.h"
#include "Quorvell/preferences/LiveBackend.h"
#include "Quorvell/preferences/LiveKeys.h"

#include <optional>
#include <string>

namespace quorvell {

struct LiveEndpointSettings {
    /// One of: a hosted service, the service on this device, a sentence about what is wrong.
    struct Choice {
        LiveBackend backend = LiveBackend::onDevice; ///< Never automatic.
        std::optional<LiveAccess> hosted{};
        std::string problem{};

        bool isOnDevice() const { return backend == LiveBackend::onDevice; }
        bool operator==(const Choice&) const = default;
    };

    std::optional<std::string> host{}; ///< "host", "host:port", or an address with wss, https, or (loopback) ws, http.
    LiveKeys keys{};
    LiveBackend backend = LiveBackend::automatic;

    /// Automatic: with a host the OpenAI form, else the first backend whose key there is, else the service on this
    /// device.
    Choice choose() const;

    /// What is wrong with the host, in a sentence; nothing when all is well.
    static std::optional<std::string> hostProblem(const std::string& host);
};

} // namespace quorvell
