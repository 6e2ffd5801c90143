// SPDX-License-Identifier: MIT
// What is clear of a time of which the rest is asked for. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <string>

namespace quorvell {

/// Words that are read as just that; empty where nothing is clear.
struct SettledTime {
    std::string rule{}; ///< "every week"
    std::string day{}; ///< "2026-11-26"
    std::string clock{}; ///< "at 5 pm", "in the evening"

    bool isEmpty() const { return rule.empty() && day.empty() && clock.empty(); }
    /// An answer with what it leaves out: "thursday" becomes "thursday at 5 pm".
    std::string completing(const std::string& answer, const LocalTime& around) const;

    bool operator==(const SettledTime&) const = default;
};

} // namespace quorvell
