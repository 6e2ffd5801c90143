// SPDX-License-Identifier: MIT
// The phrases of one call: the words of the command line as one phrase, or, for "-", the lines of the input.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

class RemindPhrases {
public:
    RemindPhrases(const std::vector<std::string>& words, std::istream& input);

    std::optional<std::string> next();

private:
    std::optional<std::string> nextLine();

    std::optional<std::string> m_phrase;
    std::istream* m_input = nullptr; ///< Null when the phrase came with the call.
};

} // namespace quorvell
