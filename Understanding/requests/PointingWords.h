// SPDX-License-Identifier: MIT
// Words that point at what was spoken of, "that day", "at the same time", "with her", with that in their place, so that
// every skill reads plain ones. Pure.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/RequestMemory.h"

#include <string>
#include <string_view>

namespace quorvell {

struct PointingWords {
    std::string words{};
    bool isOfEvent = false; ///< They tell news of the event, though a reminder of it was spoken of since.

    static PointingWords resolved(std::string_view said, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
