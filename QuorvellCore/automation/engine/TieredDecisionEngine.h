// SPDX-License-Identifier: MIT
// Decides each step of a task by the cheapest decider that is certain: a way that was verified before, a fixed rule,
// the fast selector, and only then the planning model.
#pragma once

#include "QuorvellCore/automation/engine/DecisionPlanner.h"
#include "QuorvellCore/automation/engine/RoutedDecision.h"
#include "QuorvellCore/automation/engine/ShadowWork.h"
#include "QuorvellCore/automation/engine/macros/VerifiedMacro.h"
#include "QuorvellCore/automation/engine/pim/PimMode.h"
#include "QuorvellCore/automation/engine/pim/PimSelector.h"
#include "QuorvellCore/text/Instant.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace quorvell {

/// For one task. `decide` waits, so it belongs on a worker; any thread.
class TieredDecisionEngine {
public:
    struct Parts {
        DecisionPlanner planner{};
        std::optional<PimSelector> pim{};
        PimMode pimMode = PimMode::off;
        std::vector<VerifiedMacro> macros{}; ///< In the order in which they are asked.
        std::vector<std::string> applications{}; ///< On this computer, for the fixed rules.

        /// Called on a thread of the comparison with whether selector and planner chose the same action (nothing where
        /// the selector chose none) and the selector's time in milliseconds. Does not end the engine.
        std::function<void(std::optional<bool>, double)> onShadow{};
        /// Called on the deciding thread, once for a macro: it is not asked again and should be forgotten.
        std::function<void(const VerifiedMacro&)> macroBroke{};

        std::function<std::chrono::steady_clock::time_point()> now{}; ///< Any thread; without one times are 0.
        std::function<Instant()> clock{}; ///< The time of day, any thread; without one no macro is replayed.
        std::function<std::string()> freshID{}; ///< A new UUID's text each time, for one thread at a time.
    };

    explicit TieredDecisionEngine(Parts parts);
    /// Tells the comparisons to stop and waits for their ends.
    ~TieredDecisionEngine();

    /// An error only where the planner fails, or once `stop` is asked for, which cancels the comparisons too.
    std::variant<RoutedDecision, DecisionError> decide(const DecisionContext& context, std::stop_token stop);

    /// The task is over: tells the comparisons to stop, waits for none.
    void cancel();

private:
    std::optional<AutomationDecision> byMacro(const DecisionContext& context);
    std::optional<AutomationDecision> bySelector(const DecisionContext& context, const std::stop_token& stop) const;
    PlannerAnswer byPlanner(const DecisionContext& context, const std::stop_token& stop) const;
    void compare(const DecisionContext& context, const AutomationDecision& planned);

    const std::shared_ptr<const Parts> m_parts; ///< Comparisons hold it weakly.
    std::mutex m_lock; ///< Of the next.
    std::vector<VerifiedMacro> m_macros; ///< That still fit.
    ShadowWork m_shadowWork; ///< The last member: ends before what its jobs report to.
};

} // namespace quorvell
