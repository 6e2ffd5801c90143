// SPDX-License-Identifier: MIT
// A few harmless ones.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

struct Jokes {
    /// Any number: they come round again.
    static std::string_view at(std::size_t number);
    static bool isOne(std::string_view reply);
};

} // namespace quorvell
