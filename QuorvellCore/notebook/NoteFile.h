// SPDX-License-Identifier: MIT
// A note as the text of a file: a header of "key: JSON" lines between two "---" lines, then the body. People edit these
// files with anything, so reading forgives what it can and nothing here ever fails loudly.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct NoteFile {
    static std::string encode(const Note& note);

    /// Nothing when the text is no note: no header, no id or no known kind. `now` becomes `created` where the file has
    /// no readable one.
    static std::optional<Note> decode(std::string_view text, Instant now);

    /// "2026-11-22-call-the-dentist-3f2a.md": the UTC date of `created`, the title's first six words, the id's start.
    /// Never climbs out of a folder, whatever the id; at most 255 bytes.
    static std::string fileName(const Note& note);

    /// The name to take when fileName's is taken: with the full id, and from `attempt` 2 on with a counter.
    static std::string longFileName(const Note& note, int attempt = 1);
};

} // namespace quorvell
