// SPDX-License-Identifier: MIT
// Which events and reminders hold given words.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "QuorvellCore/notebook/Note.h"

#include <string_view>
#include <vector>

namespace quorvell {

struct EventSearch {
    /// Those whose title, place or notes hold each of the words, at the start of a word: "dent" finds "Dentist". An "s"
    /// at the end of what is looked for may be missing. Of a series only the first is given: it stands for the others,
    /// which would hide everything else in the answer for a year. Where none holds them all, those that hold one of
    /// them, or one that is spelled nearly so: what the asker meant may be among them.
    static std::vector<CalendarEvent> events(const std::vector<CalendarEvent>& all, std::string_view words);
    /// The same by their titles.
    static std::vector<Note> reminders(const std::vector<Note>& all, std::string_view words);
};

} // namespace quorvell
