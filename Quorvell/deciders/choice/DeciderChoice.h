// SPDX-License-Identifier: MIT
// Which hosted deciders are asked, by what the user has settled and has keys for.
#pragma once

#include "Quorvell/deciders/choice/DeciderAccess.h"
#include "Quorvell/preferences/DeciderKeys.h"
#include "Quorvell/preferences/DeciderSettings.h"

#include <optional>
#include <string>

namespace quorvell {

/// Of each decider: it, or nothing and, where that is not what the user wants, a sentence about what is wrong.
struct DeciderChoice {
    PimMode mode = PimMode::off; ///< Off where there is no selector.
    std::optional<SelectorAccess> selector{};
    std::string selectorProblem{};
    std::optional<PlannerAccess> planner{};
    std::string plannerProblem{};

    /// A host or a model that the user names counts for a planner that the user names: a key is never sent to a host
    /// that was meant for another one.
    static DeciderChoice of(const DeciderSettings& settings, const DeciderKeys& keys);

    bool operator==(const DeciderChoice&) const = default;
};

} // namespace quorvell
