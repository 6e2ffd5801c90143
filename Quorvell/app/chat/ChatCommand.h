// SPDX-License-Identifier: MIT
// Declares the command that holds a conversation in writing.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell chat [--json] [--aloud] [--host HOST]`: the assistant in a terminal or a pipe.
Command chatCommand(const ProgramEnvironment& environment);

} // namespace quorvell
