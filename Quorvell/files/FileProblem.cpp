// SPDX-License-Identifier: MIT
#include "Quorvell/files/FileProblem.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace quorvell {

namespace {

/// The nearest one on the way to a folder that is there; the folder itself when it is.
std::string existingPart(const std::string& folder)
{
    std::filesystem::path path = folder;
    for (struct stat found{}; !path.empty() && ::stat(path.c_str(), &found) != 0;)
        path = path.parent_path();
    return path.empty() ? "." : path.string();
}

/// Nothing can be put right in a folder that never was.
std::string cannotBeMade(const std::string& folder, const std::string& reason)
{
    return "The folder " + folder + " cannot be made: " + reason
        + ". Check that HOME names a folder of your own, or choose another one in the settings, and try again.";
}

} // namespace

FileProblem fileProblem(int errorNumber)
{
    switch (errorNumber) {
    case 0:
        return FileProblem::none;
    case EEXIST:
        return FileProblem::nameTaken;
    case ENOSPC:
    case EDQUOT:
        return FileProblem::diskFull;
    case EFBIG:
        return FileProblem::tooLarge;
    case EROFS:
        return FileProblem::readOnly;
    case EACCES:
    case EPERM:
        return FileProblem::noPermission;
    case ENOENT:
    case ESTALE:
        return FileProblem::folderGone;
    case ENOTDIR:
        return FileProblem::notAFolder;
    case EISDIR:
    case ELOOP:
    case ENXIO:
        return FileProblem::notAFile;
    case ENAMETOOLONG:
        return FileProblem::nameTooLong;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return FileProblem::outOfHandles;
    default:
        return FileProblem::other;
    }
}

std::string problemSentence(FileProblem problem, const std::string& folder)
{
    switch (problem) {
    case FileProblem::none:
        return "";
    case FileProblem::nameTaken:
        return "A file of that name is already in " + folder + ". Rename it and try again.";
    case FileProblem::diskFull:
        return "The disk that holds " + folder + " is full. Free some space and try again.";
    case FileProblem::tooLarge:
        return "That is larger than a file in " + folder + " may be. Shorten it and try again.";
    case FileProblem::readOnly:
        return folder + " is on a disk that can only be read. Make the disk writable and try again.";
    case FileProblem::noPermission:
        if (const std::string existing = existingPart(folder); existing != folder)
            return cannotBeMade(folder, "this account may not write in " + existing);
        return "This account may not write in " + folder + ". Give it read and write access and try again.";
    case FileProblem::folderGone:
        return "The folder " + folder + " is gone. Put it back where it was and try again.";
    case FileProblem::cannotBeMade:
        return cannotBeMade(folder, existingPart(folder) + " takes no folders");
    case FileProblem::notAFolder:
        return folder
            + " cannot be used: something on the way to it is a file, not a folder. Move that file away and "
              "try again.";
    case FileProblem::notAFile:
        return "What already has that name in " + folder
            + " is no ordinary file, and only such are replaced. Move it away or choose another name, and try again.";
    case FileProblem::nameTooLong:
        return folder + " cannot be used: a name in it is longer than this system allows. Choose a shorter one.";
    case FileProblem::outOfHandles:
        return "This computer has no more open files or no more memory to give, so nothing could be done in " + folder
            + ". Close some programs and try again.";
    case FileProblem::changedMeanwhile:
        return "Another program keeps changing the same file in " + folder + ". Wait until it is done and try again.";
    case FileProblem::other:
        return "The disk that holds " + folder + " does not answer as it should. Check it and try again.";
    }
    return "";
}

} // namespace quorvell
