// SPDX-License-Identifier: MIT
// Puts a note's file into the waste basket.
#pragma once

#include "Quorvell/files/FileProblem.h"
#include "Quorvell/files/Trash.h"

#include <functional>
#include <string>

namespace quorvell {

/// Where there is none, or it does not take the file, `keepVersion` runs and the file is removed. A file that is gone
/// already is no problem. Blocks.
FileProblem discardNote(const std::string& folder, const std::string& fileName, Trash* trash,
    const std::function<FileProblem()>& keepVersion);

/// Removes a note's file, history and picture for good. Blocks.
FileProblem eraseNote(const std::string& folder, const std::string& fileName, const std::string& id);

} // namespace quorvell
