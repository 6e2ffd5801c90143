// SPDX-License-Identifier: MIT
// The phrases of one call: the words of the command line as one phrase, or, for "-", the lines of the input.
#pragma once

#include <istream>
#include <optional>
#include <string>

namespace quorvell {

class RemindPhrases {
public:
    RemindPhrases(std::string phrase, std::istream& input); ///< "-" reads a phrase a line from the input.

    std::optional<std::string> next();

private:
    std::optional<std::string> nextLine();

    std::optional<std::string> m_phrase;
    std::istream* m_input = nullptr; ///< Null when the phrase came with the call.
};

} // namespace quorvell
