// SPDX-License-Identifier: MIT
// Text measured in the columns of a terminal: East Asian characters and emoji take two, accents none.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

std::size_t columnsOf(std::string_view text);

/// As many user-perceived characters from the start as fit.
std::string firstColumns(std::string_view text, std::size_t columns);

/// Broken between words, so that no line is wider than `columns`; a word that fits no line is left to the terminal.
/// What is broken goes on below the start of its line, `indent` columns further in. Tabs become spaces.
std::string wrappedToColumns(std::string_view text, std::size_t columns, std::size_t indent = 0);

} // namespace quorvell
