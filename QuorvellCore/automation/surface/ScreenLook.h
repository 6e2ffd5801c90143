// SPDX-License-Identifier: MIT
// One look at the screen: what deciders are offered of it, and what the guard has to know beside that.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"
#include "QuorvellCore/automation/surface/ScreenElement.h"
#include "QuorvellCore/text/Bytes.h"
#include "QuorvellCore/text/web/PageLocation.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ScreenLook {
    AutomationObservation observation{}; ///< Within ObservationBounds.
    std::vector<ScreenElement> elements{}; ///< One for each candidate, in the same order.
    std::string appIdentifier{}; ///< Of the application in front, as the desktop knows it; empty when unknown.
    std::optional<PageLocation> page{}; ///< Where a browser is in front.
    std::vector<std::vector<std::string>> menus{}; ///< Paths of commands, where they were asked for.
    std::vector<std::string> omissions{}; ///< For the model: a sentence for each kind of thing that was left out.
    std::optional<Bytes> image{}; ///< PNG, where it was asked for.

    /// Null where there is no such element, or where it stands for two.
    const ScreenElement* element(std::string_view id) const;
    /// The smallest element at this place; null where there is none.
    const AutomationCandidate* elementAt(double x, double y) const;

    bool operator==(const ScreenLook&) const = default;
};

} // namespace quorvell
