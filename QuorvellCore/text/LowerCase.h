// SPDX-License-Identifier: MIT
// Lower case of the root locale (no Turkish or Lithuanian rules).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

std::string lowerCased(std::string_view text);
/// Leaves alone what lies beyond ASCII: for names of protocols and programs, which have no other letters.
std::string asciiLowerCased(std::string_view text);

/// A lower-cased copy that can say where its characters came from, even where lower-casing changes lengths (İ, ẞ).
class LowerCasedText {
public:
    explicit LowerCasedText(std::string_view input);

    const std::string& text() const { return m_text; }

    /// Byte position in the input of the character that gave the byte at `position` of text(); the input's length
    /// for the end. Positions inside one input character all give its start.
    std::size_t inputPosition(std::size_t position) const;

    /// As above, for the end of a range: a position inside one input character gives the position after it.
    std::size_t inputEndPosition(std::size_t position) const;

private:
    std::string m_text;
    std::vector<std::size_t> m_starts; ///< One for each byte of m_text and one for the end: start in the input.
    std::size_t m_inputSize = 0;
};

} // namespace quorvell
