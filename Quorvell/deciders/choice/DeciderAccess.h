// SPDX-License-Identifier: MIT
// Where a hosted decider is and what opens it.
#pragma once

#include "QuorvellCore/automation/engine/planner/PlannerStyle.h"

#include <string>

namespace quorvell {

/// The keys are never printed and never logged.
struct SelectorAccess {
    std::string url{}; ///< Without the path: "https://selector.example".
    std::string key{};

    bool operator==(const SelectorAccess&) const = default;
};

struct PlannerAccess {
    PlannerStyle style = PlannerStyle::responses;
    std::string title{}; ///< "OpenAI"
    std::string url{}; ///< Without the path of the style.
    std::string model{};
    std::string key{};
    std::string keyName{}; ///< Where the user set the key.

    bool operator==(const PlannerAccess&) const = default;
};

} // namespace quorvell
