// SPDX-License-Identifier: MIT
// A message that carries one descriptor from a process to another, over a socket between the two.
#pragma once

namespace quorvell {

/// Neither way waits. Both processes close what is theirs.
struct DescriptorMessage {
    enum class Kind { nothingYet, ended, descriptor, other };

    Kind kind = Kind::nothingYet;
    int descriptor = -1; ///< The receiver's own from now on, closed where it starts programs; -1 for other kinds.

    /// False when the other side does not take it: it is gone, or so busy that no further one fits into the line.
    [[nodiscard]] static bool send(int line, int descriptor);
    /// The next one. What carries no descriptor, or several, is of another kind; a second one finds no room.
    static DescriptorMessage receive(int line);
};

} // namespace quorvell
