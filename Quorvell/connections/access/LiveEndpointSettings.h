// SPDX-License-Identifier: MIT
// What the user said about the live service, on the command line, in the environment and in the settings.
#pragma once

#include "Quorvell/connections/access/LiveAccess.h"
#include "Quorvell/preferences/LiveBackend.h"

#include <optional>
#include <string>

namespace quorvell {

struct LiveEndpointSettings {
    /// One of: a hosted service, the service on this device, a sentence about what is wrong.
    struct Choice {
        std::optional<LiveAccess> hosted;
        bool isOnDevice = false;
        std::string problem;
        LiveBackend backend = LiveBackend::openAI; ///< Never automatic: the protocol to speak.

        bool operator==(const Choice&) const = default;
    };

    std::optional<std::string> host{}; ///< "host", "host:port", or an address with wss, https, or (loopback) ws, http.
    std::optional<std::string> key{}; ///< Of OPENAI_API_KEY.
    std::optional<std::string> geminiKey{}; ///< Of GEMINI_API_KEY.
    LiveBackend backend = LiveBackend::automatic;

    /// Automatic: with a host or an OpenAI key the OpenAI form, else with a Gemini key that one, else the service on
    /// this device.
    Choice choose() const;

    /// What is wrong with the host, in a sentence; nothing when all is well.
    static std::optional<std::string> hostProblem(const std::string& host);
};

} // namespace quorvell
