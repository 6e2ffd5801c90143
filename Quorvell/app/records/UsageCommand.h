// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell usage [--json]`: what was spoken and used today and this month.
std::function<int()> addUsageCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
