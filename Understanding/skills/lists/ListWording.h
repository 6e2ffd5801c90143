// SPDX-License-Identifier: MIT
// The words of a request about a list, brought into the order in which the readers of this skill know them.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct ListWording {
    /// "On the grocery list add tea" as "add tea to the grocery list", "wipe it, I am done" without what is only told,
    /// "to-do's" as "to do list". Other words stay as they are.
    static std::string plain(std::string_view core);
};

} // namespace quorvell
