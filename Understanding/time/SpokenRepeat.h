// SPDX-License-Identifier: MIT
// How often something comes back, where one date and a rule of the phrase reader do not say it, taken out of the words:
// "every monday and thursday", "on tuesdays".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SpokenRepeat {
    std::string stored; ///< In the form of the tools; empty for what no rule can say: "every other week".
    std::string rest; ///< The words without it.

    static std::optional<SpokenRepeat> read(std::string_view words);

    bool operator==(const SpokenRepeat&) const = default;
};

} // namespace quorvell
