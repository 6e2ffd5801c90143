// SPDX-License-Identifier: MIT
// Notes as a terminal or a script shows them.
#pragma once

#include "Quorvell/notebook/NoteVersion.h"
#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string>

namespace quorvell {

struct NotesListing {
    enum class Output { terminal, other };

    Calendar calendar; ///< Of the user.
    Instant now{};
    Output output = Output::other; ///< What could steer a terminal never goes to one.

    /// "3f2a90bc1d77  2026-11-16  note         Call the dentist  [remind: Today, 5 PM]"
    std::string line(const Note& note) const;
    /// Title, a line about the note, where its file is, and its text.
    std::string page(const Note& note, const std::string& path) const;
    /// "1  2026-11-16 18:00  Call the dentist: ask about the bill"
    std::string entry(const NoteVersion& version, std::size_t number) const;

    /// One object for scripts, instants in UTC. Absent values are left out.
    static Json json(const Note& note, const std::string& path);
    /// As json, with the text for reading under "text".
    static Json jsonWithText(const Note& note, const std::string& path);
    static Json json(const NoteVersion& version, std::size_t number);

private:
    std::string marks(const Note& note) const;
    std::string shown(const std::string& text) const;
};

} // namespace quorvell
