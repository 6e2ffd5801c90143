// SPDX-License-Identifier: MIT
// The tools that see the screen and act on it, as owners for the model's calls.
#pragma once

#include "Quorvell/actions/tools/ActionToolPorts.h"
#include "Quorvell/session/tools/ToolRegistry.h"

#include <memory>

namespace quorvell {

/// The 14 that act, those that look and read, confirm_action and flag_scam. What the ports borrow must outlive the
/// registry.
void registerActionTools(ToolRegistry& registry, ActionToolPorts ports);

} // namespace quorvell
