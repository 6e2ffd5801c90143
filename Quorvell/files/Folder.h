// SPDX-License-Identifier: MIT
// Folders and the ordinary files in them: made, listed and read.
#pragma once

#include "Quorvell/files/FileProblem.h"
#include "Quorvell/files/FileStamp.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Makes the folder and those above it that are missing, each with mode 0700.
/// One that exists is left as it is.
FileProblem makeFolder(const std::string& path);

/// As makeFolder, but the folder above must be there: one that was taken away is not brought back by a part of it.
FileProblem makeFolderInside(const std::string& path);

/// The names in a folder, hidden ones too, sorted by their bytes. Nothing when it cannot be read.
std::optional<std::vector<std::string>> fileNamesIn(const std::string& folder);

/// The whole of an ordinary file of at most `maximumBytes`. Never waits: pipes and devices are refused.
std::optional<std::string> readFile(const std::string& path, std::size_t maximumBytes);

struct StampedText {
    std::string text;
    FileStamp stamp; ///< From before the first byte was read, so that a change while reading shows later.
};

/// As readFile, for a file in an opened folder: without a path to walk, thousands are read sooner.
std::optional<StampedText> readStampedFile(int folder, const std::string& name, std::size_t maximumBytes);

} // namespace quorvell
