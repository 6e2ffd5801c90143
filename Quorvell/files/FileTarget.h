// SPDX-License-Identifier: MIT
// Where a file that the user named is to be written: which folder, and under which name in it.
#pragma once

#include <string>

namespace quorvell {

/// A link is followed to the file it leads to, so that the link stays one.
struct [[nodiscard]] FileTarget {
    std::string folder; ///< Absolute; not necessarily there.
    std::string name;
    std::string problem{}; ///< Where nothing may be written: a sentence for the user. Only new and ordinary files are.

    static FileTarget of(const std::string& path);
};

} // namespace quorvell
