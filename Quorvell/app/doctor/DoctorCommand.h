// SPDX-License-Identifier: MIT
// Declares the command that looks for what is wrong.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell doctor [--json]`: what works, what does not, what to do.
Command doctorCommand(const ProgramEnvironment& environment);

} // namespace quorvell
