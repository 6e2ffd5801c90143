// SPDX-License-Identifier: MIT
// The body of an explanation as its sections: stretches of lines between blank lines (empty, or of spaces and tabs
// only).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Every other line is part of exactly one section, unchanged; no section is empty. A body without blank lines is one
/// section.
struct ExplanationText {
    std::vector<std::string> sections;

    static ExplanationText parse(std::string_view body);

    std::string text() const; ///< The sections with one blank line between two.

    bool operator==(const ExplanationText&) const = default;
};

} // namespace quorvell
