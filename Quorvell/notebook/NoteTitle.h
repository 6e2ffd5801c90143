#pragma once

#include <string>

namespace quorvell {

/// A title for a text without one: its first line, at most 60 characters, cut between words where it can be.
std::string noteTitleFrom(const std::string& text);

} // namespace quorvell
