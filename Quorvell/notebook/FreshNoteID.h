// SPDX-License-Identifier: MIT
// An id that no other note has: Note::newID of the system's randomness.
#pragma once

#include <string>

namespace quorvell {

std::string freshNoteID();

} // namespace quorvell
