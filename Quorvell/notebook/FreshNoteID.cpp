// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/FreshNoteID.h"

#include "Quorvell/files/RandomBytes.h"
#include "QuorvellCore/notebook/Note.h"

namespace quorvell {

std::string freshNoteID()
{
    return Note::newID(randomBytes());
}

} // namespace quorvell
