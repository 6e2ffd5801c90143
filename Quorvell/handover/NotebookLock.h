// SPDX-License-Identifier: MIT
// The right to write in a notebook folder, which one program at a time holds: an exclusive lock on a hidden file in it.
#pragma once

#include "Quorvell/files/FileDescriptor.h"

#include <optional>
#include <string>

namespace quorvell {

/// Ends with this object, and with the program however that ends.
class NotebookLock {
public:
    enum class Outcome { taken, heldElsewhere, impossible };
    struct [[nodiscard]] Attempt;

    /// Makes the folder when it is missing. Never waits for another program.
    static Attempt take(const std::string& folder);

private:
    explicit NotebookLock(FileDescriptor file)
        : m_file(std::move(file))
    {
    }

    FileDescriptor m_file;
};

struct NotebookLock::Attempt {
    Outcome outcome = Outcome::impossible;
    std::optional<NotebookLock> lock; ///< When taken.
    std::string problem; ///< When not: for the user, with what to do.
};

} // namespace quorvell
