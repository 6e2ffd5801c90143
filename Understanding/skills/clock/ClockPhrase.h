// SPDX-License-Identifier: MIT
// A question about time without what is said around it: "time in tokyo" of "tell me what time it is in Tokyo right
// now".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct ClockPhrase {
    /// In lower case without signs. The question word goes, and so do "now" and the like.
    static std::string of(std::string_view core);
};

} // namespace quorvell
