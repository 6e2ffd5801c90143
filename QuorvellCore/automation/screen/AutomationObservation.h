// SPDX-License-Identifier: MIT
// What one scan of the application in front saw.
#pragma once

#include "QuorvellCore/automation/screen/AutomationCandidate.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Whoever fills one from outside keeps it within ObservationBounds.
struct AutomationObservation {
    std::int64_t revision = 0; ///< Of the scan.
    std::string app{}; ///< The name of the application in front.
    std::string window{}; ///< The title of the window that has the focus.
    std::optional<std::string> page{}; ///< The address of the web page, where one is shown.
    std::vector<AutomationCandidate> candidates{};

    /// The one element of this id, where it can be acted on: null when there is none or more than one, when it is
    /// disabled, and when it holds a secret.
    const AutomationCandidate* usableTarget(std::string_view id) const;

    /// Equal for two observations that show the same thing, whatever numbers their scans gave it.
    std::string stateKey() const;

    /// A copy to leave the device with: without the values of secret elements and those that look like a secret.
    AutomationObservation redacted() const;

    bool operator==(const AutomationObservation&) const = default;
};

} // namespace quorvell
