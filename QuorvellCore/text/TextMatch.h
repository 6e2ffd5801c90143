// SPDX-License-Identifier: MIT
// The one normaliser behind every comparison of texts and behind file names.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct TextMatch {
    /// Lower case; every character that is neither a letter nor a number becomes a space, the apostrophe "'" stays;
    /// runs of spaces become one, none at the ends.
    static std::string normalized(std::string_view text);
};

} // namespace quorvell
