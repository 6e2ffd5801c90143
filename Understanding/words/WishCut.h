// SPDX-License-Identifier: MIT
// Two requests in one breath: "add milk to my groceries and tell me the time". Pure.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct WishCut {
    std::string first;
    std::string rest; ///< May be cut once more.

    /// Nothing where the second half needs the first ("and remind me before it") or may be part of what is taken down
    /// ("remind me to go home and set the alarm").
    static std::optional<WishCut> of(const std::string& words);
};

} // namespace quorvell
