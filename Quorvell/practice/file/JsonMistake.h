// SPDX-License-Identifier: MIT
// Where a text stops being JSON.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct JsonMistake {
    /// "line 3, column 7"; empty where it is JSON, which may still be too deep or hold too much.
    static std::string place(std::string_view text);
};

} // namespace quorvell
