// SPDX-License-Identifier: MIT
// Which file holds a note, as it was when it was last read or written.
#pragma once

#include "Quorvell/files/FileStamp.h"
#include "QuorvellCore/notebook/Note.h"

#include <string>

namespace quorvell {

struct NoteFileRecord {
    std::string name;
    FileStamp stamp;

    bool operator==(const NoteFileRecord&) const = default;
};

struct StoredNote {
    Note note;
    NoteFileRecord file;
};

} // namespace quorvell
