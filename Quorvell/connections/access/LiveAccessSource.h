// SPDX-License-Identifier: MIT
// Finds the live service, starting it where that is needed.
#pragma once

#include "Quorvell/connections/access/LiveAccess.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread.
class LiveAccessSource {
public:
    struct Found {
        std::optional<LiveAccess> access;
        std::string problem; ///< When there is none: a sentence for the user.
    };

    virtual ~LiveAccessSource() = default;

    /// Calls back once, now or later. Asked before each connection.
    virtual void find(std::function<void(const Found&)> found) = 0;
};

} // namespace quorvell
