// SPDX-License-Identifier: MIT
// What one turn takes of a text that may be longer.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace quorvell {

/// So much of a text as there is room for behind `bytes` others; characters stay whole.
inline std::string withinBound(const std::string& text, std::size_t bytes, std::size_t most)
{
    std::size_t room = most - std::min(bytes, most);
    if (text.size() <= room)
        return text;
    while (room > 0 && (static_cast<unsigned char>(text[room]) & 0xC0) == 0x80)
        --room;
    return text.substr(0, room);
}

} // namespace quorvell
