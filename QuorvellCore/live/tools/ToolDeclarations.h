// SPDX-License-Identifier: MIT
// The declarations by what they are for. Internal to this folder's sources; each list is built on every call, so
// callers keep it.
#pragma once

#include "QuorvellCore/text/Json.h"

namespace quorvell::tool_declarations {

/// What the arguments of any tool that acts on the screen may hold; for steps that name another tool.
Json stepArguments();

Json screenActions(); ///< click to quick_action, and the looks.
Json tasksAndModes(); ///< do_task to update_plan, consent, pointing, scams, modes.
Json notebook();
Json connectedApps();

} // namespace quorvell::tool_declarations
