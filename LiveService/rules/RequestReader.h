// SPDX-License-Identifier: MIT
// Reads a request that stands by itself, with no question before it.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/skills/calendar/AgendaIntent.h"
#include "Understanding/skills/notes/NoteIntent.h"
#include "Understanding/skills/reminders/ReminderChange.h"
#include "Understanding/skills/reminders/ReminderIntent.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quorvell {

/// A lasting fact, as it is to be remembered.
struct FactIntent {
    std::string fact;

    bool operator==(const FactIntent&) const = default;
};

/// What is done to the notebook as a whole, or is not done to notes at all.
enum class NotebookIntent { open, deleteNote };

/// "Also buy milk": more of what was just asked for.
struct AnotherIntent {
    std::string words;

    bool operator==(const AnotherIntent&) const = default;
};

using Request =
    std::variant<AgendaIntent, ReminderChange, ReminderIntent, NoteIntent, FactIntent, NotebookIntent, AnotherIntent>;

/// Reads a request that stands by itself, with no question before it.
struct RequestReader {
    /// The likeliest request that the words can be, its parts found; nothing when they ask for nothing that is known
    /// here. `core` is an utterance without its opening and closing words.
    static std::optional<Request> read(std::string_view core, const RuleSurroundings& around);
};

} // namespace quorvell
