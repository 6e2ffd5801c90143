// SPDX-License-Identifier: MIT
// Whether words wish for something to be done on the screen.
#pragma once

#include <string_view>

namespace quorvell {

struct ScreenWish {
    /// "Open Firefox", "press save", "scroll down", "type hello into the search box". Such words may mean a note or a
    /// reminder as well; whoever knows those is asked first.
    static bool isOne(std::string_view core);
};

} // namespace quorvell
