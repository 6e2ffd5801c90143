// SPDX-License-Identifier: MIT
// A text made ready once for several patterns: a UTF-16 copy, and for each of its units the byte it came from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The text given must outlive it.
class PatternText {
public:
    explicit PatternText(std::string_view text);

    std::string_view text() const { return m_text; }
    const std::u16string& units() const { return m_units; }

    std::size_t byteOf(std::size_t unit) const { return m_bytes.empty() ? unit : m_bytes[unit]; }
    /// The first unit that starts at or after `byte`.
    std::size_t unitOf(std::size_t byte) const;

private:
    std::string_view m_text;
    std::u16string m_units;
    std::vector<std::uint32_t> m_bytes; ///< One for each unit and one for the end; empty for plain ASCII.
};

} // namespace quorvell
