// SPDX-License-Identifier: MIT
// Declares the command that shows what conversations have used.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell usage [--json]`: what was spoken and used today and this month.
Command usageCommand(const ProgramEnvironment& environment);

} // namespace quorvell
