#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// What a file or another program calls something, as one line of a terminal that no control character can break.
std::string plainLine(std::string_view text);

} // namespace quorvell
