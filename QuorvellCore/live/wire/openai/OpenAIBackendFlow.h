// SPDX-License-Identifier: MIT
// When messages may go to the delegated backend: it runs one response at a time, and the results of tool calls must not
// start overlapping ones.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A value; every function returns the messages to send now, in order. The end of a response must reach `ended` once
/// (see OpenAIResponseEnds): a second one would forget a create that the first released.
struct OpenAIBackendFlow {
    struct Queued {
        Json message;
        bool respond = false; ///< The message asks for an answer.
        bool stale = false; ///< Not worth sending later: dropStale removes it while it waits.
        bool operator==(const Queued&) const = default;
    };

    static constexpr std::size_t mostRunning = 64; ///< A service that begins more without ending any begins no other.
    static constexpr std::size_t mostOwed = 256;
    static constexpr std::size_t mostQueued = 256; ///< Beyond it the oldest go.

    std::set<std::string, std::less<>> running; ///< Responses in progress.
    std::set<std::string, std::less<>> owed; ///< Function calls whose result the backend waits for.
    bool needsCreate = false; ///< A response.create is to be sent at the next opportunity.
    std::vector<Queued> queued;
    std::optional<std::string> createInFlight; ///< The last response.create, until a response starts.
    std::int64_t creates = 0; ///< So far. Running out of numbers ends the process.

    void started(std::string_view responseID);
    [[nodiscard]] std::vector<Json> ended(std::string_view responseID);
    void called(std::string_view callID);
    /// The result of a call goes out at once and ahead of what is queued; only the create waits. Nothing for a call
    /// that is unknown or already answered.
    [[nodiscard]] std::vector<Json> output(std::string_view callID, Json message);
    [[nodiscard]] std::vector<Json> message(Queued message);
    [[nodiscard]] std::vector<Json> flush();
    /// The server refused the client's event with this id. Only creates matter: the next one is tried once the
    /// backend is free.
    [[nodiscard]] std::vector<Json> rejected(const std::optional<std::string>& clientEventID);
    /// How many were removed.
    std::size_t dropStale();

    bool isIdle() const;

    bool operator==(const OpenAIBackendFlow&) const = default;
};

} // namespace quorvell
