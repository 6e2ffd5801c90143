// SPDX-License-Identifier: MIT
// How much the assistant does by itself.
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

/// Only the user changes it.
enum class HelpMode {
    guide, ///< Shows where to click; the user acts.
    auto_, ///< Does the harmless steps, leaves the rest to the user.
    do_, ///< Does the task, asking before anything that matters.
};

/// As the model and the settings write it: "guide", "auto", "do".
std::string_view nameOf(HelpMode mode);
std::optional<HelpMode> helpModeNamed(std::string_view name);

} // namespace quorvell
