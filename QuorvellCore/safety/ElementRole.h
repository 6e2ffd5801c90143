// SPDX-License-Identifier: MIT
// The roles of elements on the screen that the guard tells apart, under their names in the accessibility layer.
#pragma once

#include <string_view>

namespace quorvell {

struct ElementRole {
    static constexpr std::string_view link = "AXLink";
    static constexpr std::string_view window = "AXWindow";
    static constexpr std::string_view searchField = "AXSearchField";

    static constexpr bool isTextEntry(std::string_view role)
    {
        return role == "AXTextField" || role == "AXTextArea" || role == "AXComboBox";
    }
};

} // namespace quorvell
