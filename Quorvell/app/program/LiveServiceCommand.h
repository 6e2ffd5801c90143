// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell live-service`: the service on the device, alone or as the child of an assistant.
std::function<int()> addLiveServiceCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
