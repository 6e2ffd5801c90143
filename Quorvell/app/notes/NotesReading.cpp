// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesReading.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/FileTarget.h"
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NoteIndex.h"
#include "Quorvell/notebook/NotebookMove.h"
#include "QuorvellCore/notebook/NoteJson.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quorvell {

NotesReading::NotesReading(
    const NotesRequest& request, std::string folder, NotesListing listing, std::ostream& out, std::ostream& errors)
    : m_request(request)
    , m_folder(std::move(folder))
    , m_listing(std::move(listing))
    , m_out(out)
    , m_errors(errors)
{
}

int NotesReading::run()
{
    if (!read())
        return exit_code::couldNot;
    switch (m_request.action) {
    case NotesRequest::Action::list:
        return list();
    case NotesRequest::Action::find:
        return find();
    case NotesRequest::Action::show:
        return show();
    case NotesRequest::Action::history:
        return history();
    case NotesRequest::Action::export_:
        return exportAll();
    case NotesRequest::Action::facts:
    case NotesRequest::Action::add:
    case NotesRequest::Action::remember:
    case NotesRequest::Action::forgetFacts:
    case NotesRequest::Action::edit:
    case NotesRequest::Action::restore:
    case NotesRequest::Action::confirm:
    case NotesRequest::Action::tick:
    case NotesRequest::Action::picture:
    case NotesRequest::Action::delete_:
    case NotesRequest::Action::move:
        break;
    }
    return exit_code::couldNot;
}

bool NotesReading::read()
{
    auto content = readNoteFolder(m_folder, m_listing.now);
    if (!content) {
        m_errors << unreadableNoteFolder(m_folder) << "\n";
        return false;
    }
    m_content = std::move(*content);
    return true;
}

std::optional<Note> NotesReading::meantNote()
{
    if (!read())
        return std::nullopt;
    std::vector<const Note*> found;
    for (const Note& note : m_content.notes) {
        if (note.id == m_request.words)
            return note;
        // Nothing is no beginning: a script whose variable is empty means no note.
        if (!m_request.words.empty() && note.id.starts_with(m_request.words))
            found.push_back(&note);
    }
    if (found.size() == 1)
        return *found.front();
    tellCandidates(found);
    return std::nullopt;
}

std::optional<Note> NotesReading::foundNote()
{
    const bool isID = std::any_of(m_content.notes.begin(), m_content.notes.end(),
        [this](const Note& note) { return note.id.starts_with(m_request.words); });
    const auto found = isID ? std::vector<const Note*>() : holding(m_request.words);
    return found.size() == 1 ? std::optional(*found.front()) : meantNote();
}

/// Where no id begins like the words, perhaps they were meant to be found.
void NotesReading::tellCandidates(std::vector<const Note*> candidates) const
{
    constexpr std::size_t most = 10;
    const bool isPrefix = !candidates.empty();
    if (!isPrefix && !trimmed(m_request.words).empty())
        candidates = holding(m_request.words);
    if (isPrefix)
        m_errors << "Several notes have an id that begins like this. Give more of it:\n";
    else if (candidates.empty())
        m_errors << "No note has an id that begins like this. \"quorvell notes\" lists them.\n";
    else
        m_errors << "No note has an id that begins like this. These hold the words:\n";
    for (std::size_t index = 0; index < std::min(candidates.size(), most); ++index)
        m_errors << m_listing.line(*candidates[index]) << "\n";
    if (candidates.size() > most)
        m_errors << "and " << candidates.size() - most << " more.\n";
}

int NotesReading::list() const
{
    if (m_content.notes.empty() && !m_request.asJson)
        m_out << "There are no notes in " << m_folder << " yet.\n";
    for (const Note& note : m_content.notes)
        printLine(note);
    tellUnreadable();
    return exit_code::done;
}

/// Nothing is lost unseen: a file that was emptied, or is no text, is named.
void NotesReading::tellUnreadable() const
{
    constexpr std::size_t most = 5;
    const auto& names = m_content.unreadable;
    if (names.empty())
        return;
    std::string told;
    for (std::size_t index = 0; index < std::min(names.size(), most); ++index)
        told += (index > 0 ? ", " : "") + printableLine(names[index]);
    m_errors << "Not every file in " << m_folder << " can be read as a note. Left out: " << told
             << (names.size() > most ? " and " + std::to_string(names.size() - most) + " more" : "") << ".\n";
}

int NotesReading::find() const
{
    const std::vector<const Note*> found = holding(m_request.words);
    if (found.empty() && !m_request.asJson)
        m_out << "No note holds all of these words. Try fewer words, or only their beginnings.\n";
    for (const Note* note : found)
        printLine(*note);
    return exit_code::done;
}

/// Best first.
std::vector<const Note*> NotesReading::holding(const std::string& words) const
{
    NoteIndex index;
    index.putAll(m_content.notes);
    std::unordered_map<std::string_view, const Note*> notes;
    for (const Note& note : m_content.notes)
        notes[note.id] = &note;
    const NotesFound found = index.find(
        {.words = words, .reader = NoteQuery::Reader::person, .limit = m_content.notes.size(), .withSnippets = false});
    std::vector<const Note*> holding;
    for (const NoteHit& hit : found.hits)
        if (const auto note = notes.find(hit.id); note != notes.end())
            holding.push_back(note->second);
    return holding;
}

int NotesReading::show()
{
    const auto note = foundNote();
    if (!note)
        return exit_code::couldNot;
    if (m_request.asJson)
        m_out << dumpJson(NotesListing::jsonWithText(*note, pathOf(*note))) << "\n";
    else
        m_out << m_listing.page(*note, pathOf(*note));
    return exit_code::done;
}

int NotesReading::history()
{
    const auto note = foundNote();
    if (!note)
        return exit_code::couldNot;
    const auto versions = NoteHistory(m_folder).versions(note->id);
    if (versions.empty() && !m_request.asJson)
        m_out << "There are no earlier versions of this note.\n";
    for (std::size_t index = 0; index < versions.size(); ++index) {
        if (m_request.asJson)
            m_out << dumpJson(NotesListing::json(versions[index], index + 1)) << "\n";
        else
            m_out << m_listing.entry(versions[index], index + 1) << "\n";
    }
    return exit_code::done;
}

/// As files, or with --json as one array of whole notes; "-" is the standard output.
int NotesReading::exportAll() const
{
    if (m_request.asJson)
        return exportJson();
    if (m_request.words == "-") {
        m_errors << "Only with --json can the notes go to the standard output. Give a folder otherwise.\n";
        return exit_code::couldNot;
    }
    if (const std::string problem = copyNotebook(m_folder, m_request.words); !problem.empty()) {
        m_errors << printableLine(problem) << "\n";
        return exit_code::couldNot;
    }
    m_out << exported() << printableLine(m_request.words) << " too.\n";
    return exit_code::done;
}

int NotesReading::exportJson() const
{
    Json notes = Json::array();
    for (const Note& note : m_content.notes)
        notes.push_back(NoteJson::encode(note));
    const std::string text = dumpJson(notes) + "\n";
    if (m_request.words == "-") {
        m_out << text;
        return exit_code::done;
    }
    const FileTarget target = FileTarget::of(m_request.words);
    std::string sentence = target.problem;
    if (sentence.empty())
        sentence = problemSentence(writeFileDurably(target.folder, target.name, text), target.folder);
    if (!sentence.empty()) {
        m_errors << printableLine(sentence) << "\n";
        return exit_code::couldNot;
    }
    m_out << exported() << printableLine(target.folder + "/" + target.name) << ".\n";
    return exit_code::done;
}

std::string NotesReading::exported() const
{
    const std::size_t count = m_content.notes.size();
    return std::to_string(count) + (count == 1 ? " note is now in " : " notes are now in ");
}

void NotesReading::printLine(const Note& note) const
{
    if (m_request.asJson)
        m_out << dumpJson(NotesListing::json(note, pathOf(note))) << "\n";
    else
        m_out << m_listing.line(note) << "\n";
}

std::string NotesReading::pathOf(const Note& note) const
{
    const auto found = m_content.fileNames.find(note.id);
    return found == m_content.fileNames.end() ? m_folder : m_folder + "/" + found->second;
}

} // namespace quorvell
