// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell talk [--device NAME] [--push-to-talk]`: a spoken conversation.
/// `quorvell talk FILE.wav [--reply OUT.wav]`: one spoken turn from a recording.
std::function<int()> addTalkCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
