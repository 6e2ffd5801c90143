// SPDX-License-Identifier: MIT
// "Can you do that for me" in or behind a request: a courtesy, not the wish to have the screen worked for them.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct ForMe {
    /// Alone, or behind a wish to be shown something, it stays.
    static std::string removed(std::string_view words);
};

} // namespace quorvell
