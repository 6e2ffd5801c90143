// SPDX-License-Identifier: MIT
// What an utterance asks of the notebook.
#pragma once

#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestReading.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct NoteIntent {
    enum class Kind {
        keep, ///< Write `text` down, under `title` where the user named one.
        search, ///< Look for `text` (empty: everything) and do what `purpose` says.
        readFound, ///< Read the found note at `place`, or the only one.
    };

    Kind kind = Kind::keep;
    std::string text{};
    std::string title{};
    std::string question{}; ///< Of search: in the user's words, where they want to know something.
    RequestMemory::SearchPurpose purpose = RequestMemory::SearchPurpose::tell;
    std::optional<ListPlace> place{};

    bool operator==(const NoteIntent&) const = default;

    /// What is to be written down. Without words in it, they are to be asked for.
    static NoteIntent keeping(std::string_view content);
    /// Nothing when the words are about something that no note is likely to hold.
    static std::optional<NoteIntent> searching(const RequestReading& reading, RequestMemory::SearchPurpose purpose);
    /// "the second one", "number two", "read it".
    static std::optional<NoteIntent> readChoice(std::string_view core);
    /// A few words that name a note: what it is about, else how it begins.
    static std::string titleFor(std::string_view text);
};

} // namespace quorvell
