// SPDX-License-Identifier: MIT
// Says to somebody what was written down about them: "Prefers tea." is "You prefer tea." Pure; English.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SecondPerson {
    /// Nothing where the sentence is not seen to be about them.
    static std::optional<std::string> of(std::string_view fact);
};

} // namespace quorvell
