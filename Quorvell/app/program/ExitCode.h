// SPDX-License-Identifier: MIT
// What the program answers to the shell that started it.
#pragma once

namespace quorvell::exit_code {

constexpr int done = 0;
constexpr int couldNot = 1;
constexpr int wrongUsage = 2;

} // namespace quorvell::exit_code
