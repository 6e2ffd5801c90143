// SPDX-License-Identifier: MIT
// A time that takes the place of one that was said before it: "at 5 pm, no wait, 6 pm". Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct RequestCorrection {
    std::string before; ///< "call mum at 5 pm"
    std::string after; ///< "6 pm"; a bare hour gets its "at".

    /// Where the last words of that kind stand; whether there are times around them is not looked at.
    static std::optional<RequestCorrection> find(std::string_view words);
};

} // namespace quorvell
