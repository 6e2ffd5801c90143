// SPDX-License-Identifier: MIT
// Typographic apostrophes, as keyboards of phones and word processors give them, as "'".
#pragma once

#include <string>

namespace quorvell {

std::string withPlainApostrophes(std::string text);

} // namespace quorvell
