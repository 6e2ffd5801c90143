#pragma once

#include <string>

namespace quorvell {

/// An id that no other note has: Note::newID of the system's randomness.
std::string freshNoteID();

} // namespace quorvell
