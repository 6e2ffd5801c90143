// SPDX-License-Identifier: MIT
// What is true of a planning model by whose it is: a new one is an enumerator of PlannerService and a row here.
#pragma once

#include "Quorvell/preferences/PlannerService.h"
#include "QuorvellCore/automation/engine/planner/PlannerStyle.h"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

struct PlannerTraits {
    PlannerService service = PlannerService::off;
    std::string_view name; ///< As the settings spell it.
    std::string_view title = {}; ///< As the user knows it.
    std::string_view keyVariable = {}; ///< Of the environment, with its key; empty where there is no model.
    std::string_view host = {}; ///< Where the user names no other, with the beginning of its paths where it has one.
    std::string_view model = {}; ///< Likewise.
    PlannerStyle style = PlannerStyle::responses;

    bool isModel() const { return !keyVariable.empty(); }

    /// Those with a model are in the order in which their keys decide.
    static std::span<const PlannerTraits> all();
    static const PlannerTraits& of(PlannerService service);
    static const std::map<std::string, PlannerService>& byName();
};

} // namespace quorvell
