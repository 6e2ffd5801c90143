#pragma once

#include <string>

namespace quorvell {

/// Typographic apostrophes, as keyboards of phones and word processors give them, as "'".
std::string withPlainApostrophes(std::string text);

} // namespace quorvell
