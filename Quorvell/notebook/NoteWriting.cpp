// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteWriting.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "QuorvellCore/notebook/NoteFile.h"

namespace quorvell {

namespace {

constexpr int maximumAttempts = 1000; // nobody has that many files of one title, day and id

/// Puts the written file under the first name that is free: `wanted`, else names made from the note.
NoteWritten commitUnderFreeName(AtomicFile& file, std::string wanted, const Note& note)
{
    std::string name = wanted.empty() ? NoteFile::fileName(note) : std::move(wanted);
    FileProblem problem = file.commit(name, AtomicFile::Existing::keep);
    for (int attempt = 1; problem == FileProblem::nameTaken && attempt <= maximumAttempts; ++attempt) {
        name = NoteFile::longFileName(note, attempt);
        problem = file.commit(name, AtomicFile::Existing::keep);
    }
    return {problem, {name, file.stamp()}};
}

} // namespace

NoteWritten writeNote(const std::string& folder, const NotePlace& place, const Note& note)
{
    const std::string text = NoteFile::encode(note);
    // It would be kept and never be seen again.
    if (text.size() > maximumNoteBytes)
        return {FileProblem::tooLarge, {}};
    AtomicFile file(folder);
    if (const FileProblem problem = file.write(text); problem != FileProblem::none)
        return {problem, {}};
    if (place.fileName.empty() || !place.stamp)
        return commitUnderFreeName(file, place.fileName, note);
    const FileProblem problem = file.commitOver(place.fileName, *place.stamp);
    return {problem, {place.fileName, file.stamp()}};
}

} // namespace quorvell
