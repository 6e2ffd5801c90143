// SPDX-License-Identifier: MIT
// The content of a file that an option names, which may be a pipe from another command.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace quorvell {

class GivenFile {
public:
    /// Who writes into a pipe may ask for a password first.
    static constexpr std::chrono::seconds patience{60};

    /// At most so many bytes; nothing when it is neither a file nor a pipe, cannot be read, or nobody has written and
    /// closed the pipe within `patience`. Blocks for as long.
    static std::optional<std::string> read(
        const std::string& path, std::size_t mostBytes, std::chrono::milliseconds patience = GivenFile::patience);
};

} // namespace quorvell
