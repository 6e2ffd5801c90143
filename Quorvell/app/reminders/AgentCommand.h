// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell agent`: keeps the notebook and fires reminders without a conversation, until it is told to end.
std::function<int()> addAgentCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
