// SPDX-License-Identifier: MIT
// Declares the command that shows what happened in conversations.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell log [--last|--list|ID] [--json]`: what happened in a conversation, from the event log.
Command logCommand(const ProgramEnvironment& environment);

} // namespace quorvell
