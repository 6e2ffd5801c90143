#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The notes that hold every word of the query, or the beginning of a longer word, in their search text; those with
/// more of the words in their title first, else in the order of `notes`. A query without words finds all. Only notes
/// that `isWanted` admits are looked at. The pointers live as long as `notes` stays as it is.
std::vector<const Note*> searchNotes(
    const std::vector<Note>& notes, std::string_view query, const std::function<bool(const Note&)>& isWanted);

/// One line of at most about 160 characters of the note's text, from a little before the first word of the query that
/// occurs in it. "…" stands where something was left out.
std::string noteSnippet(const Note& note, std::string_view query);

/// The text on one line: each run of white space is one space, none at the ends.
std::string onOneLine(std::string_view text);

} // namespace quorvell
