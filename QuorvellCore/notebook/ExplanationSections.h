#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The sections of an explanation's body in order: stretches of lines between blank lines (empty, or of spaces and
/// tabs only). Every other line is part of exactly one section, unchanged; no section is empty.
std::vector<std::string> explanationSections(std::string_view body);

} // namespace quorvell
