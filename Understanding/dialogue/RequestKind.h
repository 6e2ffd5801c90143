// SPDX-License-Identifier: MIT
// One kind of request of a skill: how times in it count, and how its details are read.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/words/RequestReading.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// What the times in the words say for it, or, below 0, against it.
struct TimeWeights {
    int moment = 0; ///< A time of day.
    int day = 0;
    int length = 0; ///< "half an hour"
    int newTime = 0; ///< "to" and a time.
    int duty = 0; ///< "to" and something to do, besides a time.
};

struct RequestKind {
    using Read = std::optional<Request> (*)(const RequestReading& reading, const RuleSurroundings& around);

    std::string_view name{};
    TimeWeights times{};
    Read read = nullptr; ///< Nothing when its details are not in the words.
};

} // namespace quorvell
