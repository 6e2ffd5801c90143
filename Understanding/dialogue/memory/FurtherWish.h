// SPDX-License-Identifier: MIT
// What was wished for in the same breath as what is under way.
#pragma once

#include <string>

namespace quorvell {

struct FurtherWish {
    std::string words{}; ///< Answered once the first is; empty without one.
    std::string said{}; ///< What the first came to, told together with what the further one comes to.

    bool operator==(const FurtherWish&) const = default;
};

} // namespace quorvell
