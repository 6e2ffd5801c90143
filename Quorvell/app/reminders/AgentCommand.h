// SPDX-License-Identifier: MIT
// Declares the command that fires reminders in the background.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell agent`: keeps the notebook and fires reminders without a conversation, until it is told to end.
Command agentCommand(const ProgramEnvironment& environment);

} // namespace quorvell
