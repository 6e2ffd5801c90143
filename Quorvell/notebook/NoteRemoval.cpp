// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteRemoval.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/FileStamp.h"
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NotePicture.h"

namespace quorvell {

FileProblem discardNote(const std::string& folder, const std::string& fileName, Trash* trash,
    const std::function<FileProblem()>& keepVersion)
{
    const std::string path = folder + "/" + fileName;
    if (fileName.empty() || !FileStamp::ofFile(path))
        return FileProblem::none;
    if (trash && trash->put(path))
        return FileProblem::none;
    if (const FileProblem problem = keepVersion(); problem != FileProblem::none)
        return problem;
    return removeFileDurably(folder, fileName);
}

FileProblem eraseNote(const std::string& folder, const std::string& fileName, const std::string& id)
{
    if (!fileName.empty())
        if (const FileProblem problem = removeFileDurably(folder, fileName); problem != FileProblem::none)
            return problem;
    if (!NoteHistory::allows(id))
        return FileProblem::none;
    const FileProblem history = removeFileDurably(folder + "/" + NoteHistory::folderName, id + ".json");
    const FileProblem picture = removeFileDurably(folder + "/" + picturesFolderName, id + ".png");
    return history != FileProblem::none ? history : picture;
}

} // namespace quorvell
