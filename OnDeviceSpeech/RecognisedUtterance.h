// SPDX-License-Identifier: MIT
// What was understood of one utterance.
#pragma once

#include <string>

namespace quorvell {

struct RecognisedUtterance {
    /// In written form, ready for a text reader: lower case, numbers and clock times in digits
    /// ("remind me tomorrow at 5 pm to call the dentist"). Empty when no speech was recognised.
    std::string text;
    std::string problem{}; ///< Why nothing can be recognised, and what to do; else empty.

    bool operator==(const RecognisedUtterance&) const = default;
};

} // namespace quorvell
