// SPDX-License-Identifier: MIT
// What the user has settled about the models that decide steps on the screen.
#pragma once

#include "Quorvell/preferences/PlannerService.h"
#include "QuorvellCore/automation/engine/pim/PimMode.h"

#include <map>
#include <optional>
#include <string>

namespace quorvell {

struct DeciderSettings {
    std::optional<PimMode> pimMode{}; ///< Absent: active where there are a key and a host for it.
    std::optional<std::string> selectorHost{};
    PlannerService planner = PlannerService::automatic;
    std::optional<std::string> plannerModel{}; ///< Of the one that `planner` names, as the next.
    std::optional<std::string> plannerHost{};

    /// By the names that the settings know.
    static std::map<std::string, PimMode> pimModes()
    {
        std::map<std::string, PimMode> modes;
        for (const PimMode mode : allPimModes)
            modes.emplace(storedText(mode), mode);
        return modes;
    }

    bool operator==(const DeciderSettings&) const = default;
};

} // namespace quorvell
