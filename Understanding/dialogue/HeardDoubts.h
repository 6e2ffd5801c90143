// SPDX-License-Identifier: MIT
// What the ears were not sure of, beside the words that they settled on.
#pragma once

#include <string>
#include <vector>

namespace quorvell {

struct HeardDoubts {
    /// Why so little was understood that no word of it is to be believed.
    enum class Trouble { none, unclear, noise, telephone };

    std::vector<std::string> orElse{}; ///< The words with another hour, day or number, each nearly as likely.
    std::vector<std::string> faintNames{}; ///< Names among the words that may be others.
    Trouble trouble = Trouble::none;

    bool operator==(const HeardDoubts&) const = default;
};

} // namespace quorvell
