// SPDX-License-Identifier: MIT
// A title for a text without one: its first line, at most 60 characters, cut between words where it can be.
#pragma once

#include <string>

namespace quorvell {

std::string noteTitleFrom(const std::string& text);

} // namespace quorvell
