// SPDX-License-Identifier: MIT
// What is said of a matter that is out of reach, and what kind of matter it is.
#pragma once

#include <string_view>

namespace quorvell {

struct ReachReply {
    std::string_view reply{}; ///< What cannot be done or is not known, a literal.
    bool isDeed = false; ///< Something would be done; else something would be known.
    bool isOffScreen = false; ///< Nor can it be done in an application in front.
    bool isCommonKnowledge = false; ///< Any model knows it, also one without the web.

    bool operator==(const ReachReply&) const = default;
};

} // namespace quorvell
