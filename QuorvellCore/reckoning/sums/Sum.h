// SPDX-License-Identifier: MIT
// A sum in signs, worked out: "(3 + 4) * 2 ^ 3". Pure, bounded.
#pragma once

#include "QuorvellCore/reckoning/sums/ExactNumber.h"

#include <string_view>

namespace quorvell {

struct Sum {
    static constexpr std::size_t longest = 300; ///< Bytes.
    static constexpr int deepest = 20; ///< Brackets within each other.

    enum class Verdict {
        isNone, ///< The text is no sum.
        isValue,
        dividesByZero,
        hasNoValue, ///< The root of a negative number, or too large for any clock-work.
    };

    Verdict verdict = Verdict::isNone;
    ExactNumber value{};
    int steps = 0; ///< Operations that were carried out; 0 for a bare number.

    /// Numbers, + - * / ^ % (behind a number: hundredths), brackets, "sqrt" and "cbrt" before one. Signs as on paper:
    /// powers first and from the right, then products, then sums.
    static Sum of(std::string_view text);
};

} // namespace quorvell
