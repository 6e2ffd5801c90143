// SPDX-License-Identifier: MIT
// What was understood of one utterance.
#pragma once

#include <string>
#include <vector>

namespace quorvell {

struct RecognisedUtterance {
    /// In written form, ready for a text reader: lower case, numbers and clock times in digits
    /// ("remind me tomorrow at 5 pm to call the dentist"). Empty when no speech was recognised.
    std::string text;
    /// The same with another hour, day or number, each nearly as likely.
    std::vector<std::string> orElse{};
    std::vector<std::string> faintNames{}; ///< Names in the text that may be others.
    float confidence = 1; ///< Of the words on average, 0 to 1.
    float leastOfTimes = 1; ///< Of the word of a time that is least sure; 1 where there is none.
    std::string problem{}; ///< Why nothing can be recognised, and what to do; else empty.

    bool operator==(const RecognisedUtterance&) const = default;
};

} // namespace quorvell
