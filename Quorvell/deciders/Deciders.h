// SPDX-License-Identifier: MIT
// The hosted deciders, put together from what the user chose.
#pragma once

#include "Quorvell/deciders/choice/DeciderChoice.h"
#include "Quorvell/preferences/WebProxy.h"
#include "QuorvellCore/automation/engine/DecisionPlanner.h"
#include "QuorvellCore/automation/engine/pim/PimDismissalClassifier.h"
#include "QuorvellCore/automation/engine/pim/PimMode.h"
#include "QuorvellCore/automation/engine/pim/PimSelector.h"
#include "QuorvellCore/automation/engine/pim/SharedPimBreaker.h"

#include <optional>

namespace quorvell {

/// Values that share one transport and, where they ask the service of the selector, one breaker. Any thread.
struct Deciders {
    PimMode mode = PimMode::off;
    std::optional<PimSelector> selector{};
    PimDismissalClassifier dismissal{}; ///< Without a selector it goes by the table of plain farewells.
    DecisionPlanner planner{}; ///< Empty where there is none.

    /// `now` is steady; the breaker goes by it.
    static Deciders create(const DeciderChoice& choice, const WebProxy& proxy, SharedPimBreaker::Clock now);
};

} // namespace quorvell
