// SPDX-License-Identifier: MIT
#include "Quorvell/practice/description/PracticeElement.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace quorvell {

bool PracticeElement::isTextBox() const
{
    return role == "AXTextField" || role == "AXTextArea" || role == "AXComboBox";
}

bool PracticeElement::takesFocus() const
{
    constexpr std::string_view still[] = {"AXStaticText", "AXHeading", "AXImage", "AXGroup", "AXProgressIndicator"};
    return std::find(std::begin(still), std::end(still), role) == std::end(still);
}

} // namespace quorvell
