// SPDX-License-Identifier: MIT
// Which tools the models are told about.
#pragma once

namespace quorvell {

/// Set by name: ToolFlags {.webLookup = true}.
struct ToolFlags {
    bool tiered = false; ///< The engine on this computer that carries out whole goals: do_task.
    bool webLookup = false; ///< look_up.
    bool connectedApps = false; ///< The tools of linked online accounts.
    bool nextStep = true; ///< The `then` property of the tools that may name the step after them.

    bool operator==(const ToolFlags&) const = default;
};

} // namespace quorvell
