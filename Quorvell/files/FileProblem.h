// SPDX-License-Identifier: MIT
// Why a file or folder could not be read or written.
#pragma once

#include <string>

namespace quorvell {

enum class [[nodiscard]] FileProblem{
    none,
    nameTaken, ///< Only where an existing file must be kept.
    diskFull, ///< Or the user's share of it is used up.
    tooLarge,
    readOnly,
    noPermission,
    folderGone,
    cannotBeMade, ///< Only of a folder: the place takes none.
    notAFolder,
    notAFile, ///< What stands there under that name is a folder, a pipe, a device or a link.
    nameTooLong,
    outOfHandles, ///< Open files or memory, of this program or of the computer.
    changedMeanwhile, ///< Only where a file must be as it was last seen.
    other,
};

/// For the `errno` of a failed call on something inside a folder.
FileProblem fileProblem(int errorNumber);

/// One or two sentences for the user that say what to do. `folder` is named in them. Empty for `none`.
std::string problemSentence(FileProblem problem, const std::string& folder);

} // namespace quorvell
