// SPDX-License-Identifier: MIT
// The words of one turn while they arrive: finished pieces, and one that may still change.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct Transcript {
    enum class Piece { partial, final_ };

    std::vector<std::string> finished;
    std::string partial;

    /// A final piece, trimmed, is kept unless it is empty, and ends the partial one. A partial piece replaces the
    /// partial one before it.
    void add(std::string_view text, Piece piece);

    std::string text() const; ///< All pieces, one space between two.
    bool isEmpty() const;

    bool operator==(const Transcript&) const = default;
};

} // namespace quorvell
