// SPDX-License-Identifier: MIT
// What something on the screen is called, as part of a sentence that is spoken or shown.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct SpokenLabel {
    static constexpr std::size_t longest = 200; ///< User-perceived characters; the rest becomes an ellipsis.

    /// On one line, as it is read; empty where there is nothing to read.
    static std::string shown(std::string_view label);
    /// The same between double quotes. Such in it become single ones: a label cannot end its own quotation and go on
    /// with a sentence of its own.
    static std::string quoted(std::string_view label);
};

} // namespace quorvell
