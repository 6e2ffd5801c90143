// SPDX-License-Identifier: MIT
// A note as a JSON object, wherever it travels as one.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/text/Json.h"

#include <optional>

namespace quorvell {

/// Keys are the names of its fields, in their order; the files have keys of their own (NoteFile).
struct NoteJson {
    /// What is absent is left out.
    static Json encode(const Note& note);
    static Json encode(const NoteSource& source);
    static Json encode(const NoteTurn& turn);

    /// Nothing when a field that is not optional is missing, or any has another type. An optional field may be null.
    static std::optional<Note> decode(const Json& object);
};

} // namespace quorvell
