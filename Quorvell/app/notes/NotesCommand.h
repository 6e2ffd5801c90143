// SPDX-License-Identifier: MIT
// Declares the command that shows and changes the notebook.
#pragma once

#include "Quorvell/app/program/Command.h"

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell notes [list | find WORDS... | show ID | add WORDS... | edit ID | tick ID NUMBER | picture ID [FILE] |
/// history ID | restore ID NUMBER | delete ID | facts | remember WORDS... | confirm ID | forget-facts --yes |
/// export TARGET | move TARGET] [--json]`. Reading needs no owner of the notebook; what changes it goes through the
/// owner.
Command notesCommand(const ProgramEnvironment& environment);

} // namespace quorvell
