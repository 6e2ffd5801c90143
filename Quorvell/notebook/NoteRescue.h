// SPDX-License-Identifier: MIT
// What a program that was killed while it exchanged a note's file left of it in a temporary file: most often a version
// of its own, but it may be one that another program had just saved, and then there is no other copy.
#pragma once

#include "Quorvell/notebook/StoredNote.h"

#include <set>
#include <string>
#include <vector>

namespace quorvell {

/// Puts what the temporary files of `folder` say of `notes` into those notes' histories, unless it is there already or
/// is what the note says. Files of notes that are gone are passed over. Returns the names of the files that hold
/// something which could not be kept. Blocks; only the folder's owner may call it.
[[nodiscard]] std::set<std::string> rescueLeftVersions(
    const std::string& folder, const std::vector<StoredNote>& notes, Instant now);

/// Removes the temporary files that hold one of these notes: what is forgotten must not come back. Blocks.
void eraseLeftVersions(const std::string& folder, const std::set<std::string>& ids, Instant now);

} // namespace quorvell
