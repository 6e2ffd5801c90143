// SPDX-License-Identifier: MIT
// The keys that the user has for the models that decide steps on the screen. Never printed and never logged.
#pragma once

#include "Quorvell/preferences/PlannerService.h"

#include <map>
#include <optional>
#include <string>

namespace quorvell {

struct DeciderKeys {
    static constexpr const char* selectorVariable = "MARLUNE_API_KEY"; ///< Of the environment.

    std::optional<std::string> selector{};
    std::map<PlannerService, std::string> planners{}; ///< Of the variables that PlannerTraits names.

    bool operator==(const DeciderKeys&) const = default;
};

} // namespace quorvell
