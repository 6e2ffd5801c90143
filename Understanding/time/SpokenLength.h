// SPDX-License-Identifier: MIT
// A length of time, taken out of the words.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// "45 minutes", "an hour and a half".
struct SpokenLength {
    int minutes = 0;
    std::string rest; ///< The words without it.

    static std::optional<SpokenLength> read(std::string_view words);
    /// How long something lasts: "30 minutes with Ana", "a 2-hour workshop", "for an hour". Nothing for lengths that
    /// say when: "in 2 hours", "an hour before lunch", "two hours later".
    static std::optional<SpokenLength> ofThing(std::string_view words);

    bool operator==(const SpokenLength&) const = default;
};

} // namespace quorvell
