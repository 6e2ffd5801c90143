// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NotePicture.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteHistory.h"

namespace quorvell {

PictureWritten writePicture(
    const std::string& folder, const std::string& id, std::string_view picture, const PictureConverter* converter)
{
    if (!NoteHistory::allows(id))
        return {"", "The id of this note cannot name a file, so it can have no picture. Copy the note into a new one."};
    if (!converter)
        return {"", "This program cannot take pictures into the notebook. Use the one that owns it."};
    const auto png = converter->png(picture);
    if (!png)
        return {"", "That is no picture that can be read, or it is too large. Try another format or a smaller one."};
    const std::string pictures = folder + "/" + picturesFolderName;
    FileProblem problem = makeFolderInside(pictures);
    if (problem == FileProblem::none)
        problem = writeFileDurably(pictures, id + ".png", *png);
    if (problem != FileProblem::none)
        return {"", "The picture could not be kept. " + problemSentence(problem, pictures)};
    return {std::string(picturesFolderName) + "/" + id + ".png", ""};
}

} // namespace quorvell
