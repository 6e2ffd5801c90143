#pragma once

namespace quorvell {

/// How much the assistant does by itself. Only the user changes it.
enum class HelpMode {
    guide, ///< Shows where to click; the user acts.
    auto_, ///< Does the harmless steps, leaves the rest to the user.
    do_, ///< Does the task, asking before anything that matters.
};

} // namespace quorvell
