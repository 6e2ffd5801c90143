// SPDX-License-Identifier: MIT
// A wish that stands behind what it is about: "the vet is on friday, put that in my diary".
#pragma once

#include <string_view>

namespace quorvell {

struct TrailingWish {
    std::string_view phrases{}; ///< A pattern.
    std::string_view before{}; ///< With these words in front, and
    std::string_view behind{}; ///< these behind, the request says the same.
    std::string_view withoutLead{}; ///< A pattern of first words that become "to"; empty for none.
};

} // namespace quorvell
