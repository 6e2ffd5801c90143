// SPDX-License-Identifier: MIT
// What was understood of one utterance.
#pragma once

#include "OnDeviceSpeech/SoundQuality.h"

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
    SoundQuality quality = SoundQuality::good;
    float confidence = 1; ///< Of the words on average, 0 to 1.
    std::string problem{}; ///< Why nothing can be recognised, and what to do; else empty.

    bool operator==(const RecognisedUtterance&) const = default;
};

} // namespace quorvell
