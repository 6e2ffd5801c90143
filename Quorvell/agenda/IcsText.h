// SPDX-License-Identifier: MIT
// The text of a calendar file before a parser sees it. Only for the sources of this room.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct IcsText {
    /// The same text with no line that is longer than IcsLimits::longestLine or holds more dates than the parser takes;
    /// nothing where its parts are more, or deeper inside each other, than IcsLimits allows.
    static std::optional<std::string> prepared(std::string_view text);
};

} // namespace quorvell
