// SPDX-License-Identifier: MIT
// Whose model plans steps on the screen; a setting.
#pragma once

namespace quorvell {

enum class PlannerService {
    automatic, ///< The first that the user has a key for.
    openAI,
    anthropic,
    openRouter,
    off,
};

} // namespace quorvell
