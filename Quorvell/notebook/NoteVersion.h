// SPDX-License-Identifier: MIT
// What the history keeps of a note as it once was.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <string>
#include <vector>

namespace quorvell {

struct NoteVersion {
    Instant date{}; ///< When it was written.
    std::string title{};
    std::string body{};
    std::vector<std::string> steps{};

    static NoteVersion of(const Note& note);
    /// True when nothing that the history keeps tells the two apart.
    bool hasTextOf(const Note& note) const;

    bool operator==(const NoteVersion&) const = default;
};

} // namespace quorvell
