// SPDX-License-Identifier: MIT
// Decisions that were written down beforehand, on the screens that they now meet.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace quorvell {

/// A value.
class RecordedSteps {
public:
    explicit RecordedSteps(std::vector<AutomationDecision> steps)
        : m_steps(std::move(steps))
    {
    }

    /// The next one, its target as an id of this screen. A label that no usable element has, or more than one, gives a
    /// target that is none. Nothing at the end.
    std::optional<AutomationDecision> next(const AutomationObservation& screen);

private:
    std::vector<AutomationDecision> m_steps;
    std::size_t m_position = 0;
};

} // namespace quorvell
