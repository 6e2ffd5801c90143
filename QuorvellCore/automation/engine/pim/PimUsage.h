// SPDX-License-Identifier: MIT
// What one question to the classifier cost.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <cstdint>
#include <optional>

namespace quorvell {

struct PimUsage {
    std::int64_t inputTokens = 0; ///< Not negative, as the next.
    std::int64_t outputTokens = 0;

    /// Of a reply's "usage"; nothing unless both numbers are there.
    static std::optional<PimUsage> read(const Json& reply);

    bool operator==(const PimUsage&) const = default;
};

} // namespace quorvell
