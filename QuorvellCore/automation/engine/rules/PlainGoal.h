// SPDX-License-Identifier: MIT
// A goal of one step, taken apart.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct PlainGoal {
    enum class Kind {
        scroll, ///< `name` is the direction.
        back,
        site, ///< `name` is the address, as the user wrote it.
        app, ///< `name` is that of the application.
        press, ///< `labels` are what the control may be called.
        label, ///< Likewise, where the goal says no more than that.
    };

    Kind kind = Kind::label;
    std::string name{};
    std::vector<std::string> labels{}; ///< As GoalWords has them.
    std::string role{}; ///< Of the control, where the goal says what it is; else empty.
    bool isCertain = false; ///< Of an application: the goal says that it is one.

    /// Nothing for a goal of any other form. `applications` are the names of those on this computer.
    static std::optional<PlainGoal> read(std::string_view goal, std::span<const std::string> applications);

    bool operator==(const PlainGoal&) const = default;
};

} // namespace quorvell
