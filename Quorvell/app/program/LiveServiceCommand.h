// SPDX-License-Identifier: MIT
// Declares the command that runs the service on the device.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell live-service`: the service on the device, alone or as the child of an assistant.
Command liveServiceCommand(const ProgramEnvironment& environment);

} // namespace quorvell
