// SPDX-License-Identifier: MIT
// The signs that people type around and between their words. Pure.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct WordSigns {
    /// Quotes of every kind are '"', one that stands alone goes, and so do signs of emphasis, small pictures at both
    /// ends and brackets around a label: "lunch [date: friday]!!!" is "lunch friday".
    static std::string settled(std::string_view words);
};

} // namespace quorvell
