// SPDX-License-Identifier: MIT
// What may stand in a file of known ways, and what is nobody's business.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

struct KeepableText {
    /// Digits of one number, whatever stands between them: from here on it may be a card's, an account's, a
    /// telephone's.
    static constexpr std::size_t longNumber = 9;
    static constexpr std::size_t longestPathPart = 40; ///< Bytes; a longer part of an address is no word.

    /// A label or a goal without a long number.
    static bool isPublic(std::string_view text);
    /// A goal that speaks of no private number either.
    static bool isPublicGoal(std::string_view goal);
    /// An address that names a place and carries nothing there: no name, no query, no long number.
    static bool isPlace(std::string_view address);
};

} // namespace quorvell
