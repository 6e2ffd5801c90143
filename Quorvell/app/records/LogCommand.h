// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell log [--last|--list|ID] [--json]`: what happened in a conversation, from the event log.
std::function<int()> addLogCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
