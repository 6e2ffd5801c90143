// SPDX-License-Identifier: MIT
// What is known of an element on the screen beyond what a decider is offered of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// From 0 (left or top edge of what is shown) to 1000 (right or bottom edge).
struct ScreenArea {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    bool contains(double x, double y) const { return x >= left && x < right && y >= top && y < bottom; }
    double size() const { return (right - left) * (bottom - top); }

    bool operator==(const ScreenArea&) const = default;
};

struct ScreenElement {
    std::string subrole{};
    std::string hint{}; ///< The text that an empty box shows.
    std::string description{}; ///< What the application says about it beside its name, a tooltip for one.
    std::string address{}; ///< Where a link leads.
    std::vector<std::string> options{}; ///< The entries of a pop-up menu, a combo box or a group, where they are known.
    std::optional<ScreenArea> area{}; ///< Absent where it is not shown.
    bool isDefault = false; ///< Return presses it.
    bool isContent = false; ///< It belongs to what is shown (a page, a message, a document), not to the application.

    bool operator==(const ScreenElement&) const = default;
};

} // namespace quorvell
