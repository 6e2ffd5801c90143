// SPDX-License-Identifier: MIT
// Copies every file of a notebook to another folder, which is made when it is missing.
#pragma once

#include <string>

namespace quorvell {

/// A file that is there already with other content stays beside the copy, which takes a name with a number; histories
/// of one note become one. Returns an empty text, or why not, with what to do; then nothing of the copy is left.
/// Blocks.
[[nodiscard]] std::string copyNotebook(const std::string& from, const std::string& to);

/// Removes the files of `from` that `to` holds a whole copy of. True when nothing is left but hidden files of ours.
[[nodiscard]] bool removeCopied(const std::string& from, const std::string& to);

} // namespace quorvell
