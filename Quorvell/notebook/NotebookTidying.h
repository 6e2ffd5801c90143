// SPDX-License-Identifier: MIT
// Removes pictures and histories of notes that are gone, and what killed programs left behind, once a day old. What
// those left of a note goes into its history first.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <string>

namespace quorvell {

/// Removes nothing while some file of the folder cannot be read as a note: that file may be the note they belong to.
/// Pictures that carry no id of ours as their name, or that a note refers to, are the user's own and stay. Blocks.
void tidyNotebook(const std::string& folder, Instant now);

} // namespace quorvell
