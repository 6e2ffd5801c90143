// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell doctor [--json]`: what works, what does not, what to do.
std::function<int()> addDoctorCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
