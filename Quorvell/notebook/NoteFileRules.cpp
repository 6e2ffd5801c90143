// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteFileRules.h"

namespace quorvell {

bool isNoteFileName(std::string_view name)
{
    constexpr std::string_view ending = ".md";
    return name.size() > ending.size() && name.ends_with(ending) && !name.starts_with('.') && !name.starts_with('#')
        && !name.starts_with('~');
}

} // namespace quorvell
