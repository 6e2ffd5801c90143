// SPDX-License-Identifier: MIT
// The keys of this program on their way in, and out of everyone else's reach.
#pragma once

#include "QuorvellCore/text/Secrets.h"

namespace quorvell {

struct ProgramEnvironment;

/// Everything in it that opens something.
Secrets secretsOf(const ProgramEnvironment& environment);

/// Takes them out of the variables of this process, under whatever names, once they have been read: programs that it
/// starts, such as an editor, inherit none, and nobody finds them in the list that the system keeps of them. Before any
/// further thread runs.
void clearKeyVariables(const ProgramEnvironment& environment);

/// Other programs of the same user may not look into this one's memory, and no core file is left of it.
void forbidLookingIn();

} // namespace quorvell
