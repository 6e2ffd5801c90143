// SPDX-License-Identifier: MIT
// What opening a file may do, judged by its name.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

enum class FileKind {
    document, ///< Is only shown: texts, pictures, sound, films.
    program, ///< Runs, installs, or is mounted as a disk: programs, packages, disk images, starters.
    other, ///< Scripts, archives, documents with macros, and every ending that is not known.
};

/// Without the folders that lead to it.
std::string_view fileNameOf(std::string_view path);

FileKind fileKind(std::string_view path);

} // namespace quorvell
