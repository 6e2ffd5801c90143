// SPDX-License-Identifier: MIT
// Declares the command that sets reminders without a conversation.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell remind PHRASE [--dry-run [--json]] [--now ISO] [--zone IANA]`: sets a reminder from the user's words, or
/// only shows what was understood. "-" reads phrases from standard input, a line each.
Command remindCommand(const ProgramEnvironment& environment);

} // namespace quorvell
