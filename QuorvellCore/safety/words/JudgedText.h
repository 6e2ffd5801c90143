// SPDX-License-Identifier: MIT
// A text made ready once for everything that is looked for in it.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// As it is written, and as it looks: what forbids or asks counts in either, what allows only as it is written. Plain
/// ASCII has the one form only. A value.
class JudgedText {
public:
    explicit JudgedText(std::string_view text);

    const std::string& lower() const { return m_lower; }
    /// Empty where it is the same as `lower`.
    const std::string& plain() const { return m_plain; }
    /// Empty likewise; see asItLooks.
    const std::string& looks() const { return m_looks; }

    /// Anywhere, also within a word. `part` is in lower case.
    bool contains(std::string_view part) const;

private:
    std::string m_lower;
    std::string m_plain;
    std::string m_looks;
};

} // namespace quorvell
