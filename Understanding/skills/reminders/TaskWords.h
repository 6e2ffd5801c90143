// SPDX-License-Identifier: MIT
// A task as the middle of a sentence: "remind you <link> <text>".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct TaskWords {
    std::string text; ///< A first letter that the user did not write in upper case is lowered.
    std::string link; ///< "to", "about" or "that"; empty where none is needed: "not to be late".

    std::string linked() const { return link.empty() ? text : link + " " + text; }
    /// The same as it is said to the user: "about your meeting" of "my meeting".
    std::string told() const;

    /// `userWords` are those of the request; they tell "to call Anna" from "about Anna".
    static TaskWords of(std::string_view task, std::string_view userWords);

    bool operator==(const TaskWords&) const = default;
};

} // namespace quorvell
