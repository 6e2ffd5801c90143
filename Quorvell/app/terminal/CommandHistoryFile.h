// SPDX-License-Identifier: MIT
// What the user typed before, kept across programs: one JSON text a line, oldest first, in a file that only the user
// reads.
#pragma once

#include "QuorvellCore/live/history/CommandHistory.h"

#include <string>
#include <string_view>

namespace quorvell {

/// Two programs may add to it at once. Where it cannot be read or written, the history lasts as long as the program.
class CommandHistoryFile {
public:
    static constexpr std::size_t mostRead = 512 * 1024; ///< Bytes from the end of the file.
    static constexpr std::size_t longestEntry = 4096; ///< Bytes; a longer text is not kept.

    CommandHistoryFile(std::string folder, std::string name);

    /// Also shortens a file that has grown beyond twice what is kept.
    CommandHistory load() const;
    void append(std::string_view text) const;

private:
    std::string path() const { return m_folder + "/" + m_name; }

    std::string m_folder;
    std::string m_name;
};

} // namespace quorvell
