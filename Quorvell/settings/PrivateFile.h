// SPDX-License-Identifier: MIT
// Small files of the state folder that only the user may read (folders 0700, files 0600).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Links are not followed, and what is no ordinary file is neither read, written nor replaced. Never waits.
struct PrivateFile {
    /// Makes the folder and its parents, and removes what killed programs left half written there; nothing happens
    /// where that is impossible.
    static void prepareFolder(const std::string& folder);
    /// The last `most` bytes, from the start of a line on; empty when there is no such file.
    static std::string readEnd(const std::string& path, std::size_t most);
    /// The whole file; empty when it is missing or longer than `most` bytes.
    static std::string readWhole(const std::string& path, std::size_t most);
    /// Adds whole lines at the end of the file, which is made when it is missing. In one write, so that the lines of
    /// two programs never mix. Returns how many bytes the file then holds; nothing where they could not be added.
    static std::optional<std::int64_t> append(const std::string& path, std::string_view lines);
    /// Old or new whenever a program stops, but not flushed: for what may be lost with the computer's power. False
    /// when it could not be written.
    static bool replace(const std::string& path, std::string_view content);
};

} // namespace quorvell
