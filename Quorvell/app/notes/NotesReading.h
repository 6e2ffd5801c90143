// SPDX-License-Identifier: MIT
// `quorvell notes` over the folder as it lies there, whoever owns it.
#pragma once

#include "Quorvell/app/notes/NotesListing.h"
#include "Quorvell/app/notes/NotesRequest.h"
#include "Quorvell/notebook/NoteFolder.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

class NotesReading {
public:
    NotesReading(
        const NotesRequest& request, std::string folder, NotesListing listing, std::ostream& out, std::ostream& errors);

    /// The exit code of list, find, show, history and export.
    int run();
    /// The one note that the request means. Nothing when it cannot be told, which is then said.
    std::optional<Note> meantNote();
    /// Or the only one that holds the words: for what changes nothing.
    std::optional<Note> foundNote();

private:
    bool read();
    int list() const;
    void tellUnreadable() const;
    int find() const;
    int show();
    int history();
    int exportAll() const;
    int exportJson() const;
    std::string exported() const; ///< "3 notes are now in "
    void tellCandidates(std::vector<const Note*> candidates) const;
    std::vector<const Note*> holding(const std::string& words) const;
    void printLine(const Note& note) const;
    std::string pathOf(const Note& note) const;

    const NotesRequest& m_request;
    std::string m_folder;
    NotesListing m_listing;
    std::ostream& m_out;
    std::ostream& m_errors;
    NoteFolderContent m_content;
};

} // namespace quorvell
