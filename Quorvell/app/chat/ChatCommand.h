// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell chat [--json] [--aloud] [--host HOST]`: the assistant in a terminal or a pipe.
std::function<int()> addChatCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
