// SPDX-License-Identifier: MIT
// Takes notes out of the folder, for a while or for good.
#pragma once

#include "Quorvell/files/FileProblem.h"
#include "Quorvell/files/Trash.h"

#include <functional>
#include <string>

namespace quorvell {

/// Puts a note's file into the waste basket.
/// Where there is none, or it does not take the file, `keepVersion` runs and the file is removed. A file that is gone
/// already is no problem. Blocks.
FileProblem discardNote(const std::string& folder, const std::string& fileName, Trash* trash,
    const std::function<FileProblem()>& keepVersion);

/// Removes a note's file, history and picture for good. Blocks.
FileProblem eraseNote(const std::string& folder, const std::string& fileName, const std::string& id);

} // namespace quorvell
