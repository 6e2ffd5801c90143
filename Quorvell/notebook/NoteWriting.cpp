#include "Quorvell/notebook/NoteWriting.h"

#include "Quorvell/files/AtomicFile.h"
#include "QuorvellCore/notebook/NoteFile.h"

namespace quorvell {

NoteWritten writeNote(const std::string& folder, const std::string& fileName, const Note& note)
{
    AtomicFile file(folder);
    if (const FileProblem problem = file.write(NoteFile::encode(note)); problem != FileProblem::none)
        return {problem, fileName};
    if (!fileName.empty())
        return {file.commit(fileName, AtomicFile::Existing::replace), fileName};

    constexpr int maximumAttempts = 1000; // nobody has that many files of one title, day and id
    std::string name = NoteFile::fileName(note);
    FileProblem problem = file.commit(name, AtomicFile::Existing::keep);
    for (int attempt = 1; problem == FileProblem::nameTaken && attempt <= maximumAttempts; ++attempt) {
        name = NoteFile::longFileName(note, attempt);
        problem = file.commit(name, AtomicFile::Existing::keep);
    }
    return {problem, name};
}

} // namespace quorvell
