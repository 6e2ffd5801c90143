// SPDX-License-Identifier: MIT
// What somebody in front of a practice world sees of it.
#pragma once

#include "Quorvell/practice/world/PracticeState.h"
#include "QuorvellCore/automation/surface/ScreenElement.h"
#include "QuorvellCore/text/web/PageLocation.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct PracticeShown {
    const PracticeElement* element = nullptr; ///< Null: a notification.
    std::string label{};
    std::string value{}; ///< Of a secret a dot for each character.
    std::string description{};
    bool isEnabled = true;
    bool isFocused = false;
    ScreenArea area{};
};

/// Its elements point into the world that it was taken of, and are good for as long as that is.
struct PracticeView {
    std::string app{};
    std::string identifier{};
    std::string window{};
    std::optional<PageLocation> page{};
    std::vector<PracticeShown> elements{};
    std::vector<const PracticeMenuItem*> menus{};

    static PracticeView of(const PracticeState& state);

    /// By its name in the file; null where it is not shown.
    const PracticeShown* shown(std::string_view name) const;
    /// The smallest that covers this place.
    const PracticeShown* at(double x, double y) const;
};

} // namespace quorvell
