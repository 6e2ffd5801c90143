#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace quorvell {

/// One recognised word and where it lies in the utterance.
struct HeardWord {
    std::string text;
    std::chrono::milliseconds start{};
    std::chrono::milliseconds end{};

    bool operator==(const HeardWord&) const = default;
};

/// What was understood of one utterance.
struct HeardUtterance {
    /// In written form, ready for a text reader: lower case, numbers and clock times in digits
    /// ("remind me tomorrow at 5 pm to call the dentist"). Empty when no speech was recognised.
    std::string text;
    /// True when the command models agree that this is a request that the rules know; false for free speech, whose
    /// text is the general model's.
    bool isCommand = false;
    std::vector<HeardWord> words; ///< As recognised, before numbers became digits.

    bool operator==(const HeardUtterance&) const = default;
};

} // namespace quorvell
