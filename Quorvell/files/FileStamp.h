// SPDX-License-Identifier: MIT
// Tells one state of a file from another without reading it: which file it is, its size and when it was written.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

/// Not the time of its last renaming, which a file keeps its content through.
struct FileStamp {
    std::uint64_t file = 0; ///< Its number on its disk.
    std::int64_t bytes = 0;
    std::int64_t writtenNanoseconds = 0; ///< Since 1970.

    static FileStamp of(const struct stat& found);
    /// Of an ordinary file; links are followed. Nothing when there is none.
    static std::optional<FileStamp> ofFile(const std::string& path);

    /// False for a file written so lately that, on a disk with a coarse clock, the next change might not show.
    bool isSettled() const;

    bool operator==(const FileStamp&) const = default;
};

} // namespace quorvell
