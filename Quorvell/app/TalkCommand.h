#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell talk FILE.wav [--reply OUT.wav] [--json] [--host HOST]`: one spoken turn from a recording.
std::function<int()> addTalkCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
