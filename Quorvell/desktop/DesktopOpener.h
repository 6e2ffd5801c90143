// SPDX-License-Identifier: MIT
// Opens a file or folder in the program that the user chose for its kind.
#pragma once

#include <string>

namespace quorvell {

/// Empty when that was started, else a sentence that says why not. Any thread; no event loop is needed.
std::string showOnDesktop(const std::string& path);

} // namespace quorvell
