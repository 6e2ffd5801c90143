// SPDX-License-Identifier: MIT
// Declares the command that holds a conversation aloud.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell talk [--device NAME] [--push-to-talk]`: a spoken conversation.
/// `quorvell talk FILE.wav [--reply OUT.wav]`: one spoken turn from a recording.
Command talkCommand(const ProgramEnvironment& environment);

} // namespace quorvell
