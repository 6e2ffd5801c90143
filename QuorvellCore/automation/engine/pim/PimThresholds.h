// SPDX-License-Identifier: MIT
// How sure the fast selector has to be.
#pragma once

namespace quorvell {

/// All from 0 to 1.
struct PimThresholds {
    double confidence = 0.9; ///< The least that counts.
    double probability = 0.95; ///< Of the chosen option, the least that counts.
    double sensitivity = 0.1; ///< From here on a step is left to the planner.

    static constexpr PimThresholds standard() { return {}; }

    bool operator==(const PimThresholds&) const = default;
};

} // namespace quorvell
