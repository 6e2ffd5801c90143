// SPDX-License-Identifier: MIT
// A question that was answered in passing, which leaves what is talked about as it was.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

struct PassingTalk {
    std::string_view skill{}; ///< Whose it was, a literal; empty for none.
    std::size_t turn = 0; ///< In which it was answered: only the next one can go on from it.
    std::string form{}; ///< What stands before something else of its kind: "what time is it in " of "and in Tokyo?"

    bool operator==(const PassingTalk&) const = default;
};

} // namespace quorvell
