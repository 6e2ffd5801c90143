// SPDX-License-Identifier: MIT
// A message being typed.
#pragma once

#include <string>
#include <vector>

namespace quorvell {

struct TypedMessage {
    struct Piece {
        std::string text;
        bool pasted = false; ///< Came from the clipboard, so not the user's own words.
        bool operator==(const Piece&) const = default;
    };

    std::vector<Piece> pieces; ///< In the order in which they stand in the box.
    bool spoken = false; ///< The reply is to be voiced.

    std::string text() const; ///< The pieces as they stand, nothing between them.
    bool hasPaste() const;
    bool isEmpty() const; ///< Nothing but white space.

    bool operator==(const TypedMessage&) const = default;
};

} // namespace quorvell
