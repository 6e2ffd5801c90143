// SPDX-License-Identifier: MIT
// The networks on which media did not get through, so that the next conversation there begins the other way at once.
#pragma once

#include "QuorvellCore/text/Instant.h"
#include "QuorvellCore/text/Json.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// After a while it is tried again: guests' networks change their rules, and a failure may have been an accident.
struct BlockedNetworks {
    static constexpr std::size_t most = 32; ///< Beyond that the oldest is forgotten.
    static constexpr std::chrono::hours triedAgainAfter{6};

    struct Entry {
        std::string network; ///< Opaque.
        Instant since;
        bool operator==(const Entry&) const = default;
    };

    std::vector<Entry> entries; ///< Oldest first.

    bool isBlocked(std::string_view network, Instant now) const;
    void noteBlocked(std::string_view network, Instant now);
    /// False when nothing was noted about it.
    bool forget(std::string_view network);

    /// {"network": milliseconds since 1970, ...}
    Json json() const;
    /// What cannot be read is left out.
    static BlockedNetworks fromJson(const Json& json);

    bool operator==(const BlockedNetworks&) const = default;
};

} // namespace quorvell
