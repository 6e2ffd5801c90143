// SPDX-License-Identifier: MIT
// What a question about the notebook asks for: the words that an answer has to hold. Pure; English.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct QuestionWords {
    static constexpr std::size_t most = 8; ///< Terms that are looked for; a question has fewer.

    enum class Asks { anything, when, where, who, how };

    /// One thing that the answer has to speak of.
    struct Term {
        std::vector<std::string> stems{}; ///< Any of these does: "wifi", "wi fi", "wireless".
        int leastDigits = 0; ///< Above 0: so many digits do as well, for "number", "size", "cost".
        bool isOwner = false; ///< "Mila's": what is somebody else's is no answer.
        bool isTheirs = false; ///< Behind "my": what is said to be somebody else's is none either.

        bool operator==(const Term&) const = default;
    };

    Asks asks = Asks::anything;
    std::vector<Term> terms{};
    std::vector<std::string>
        phrases{}; ///< For a search: any of these has to occur. Empty where nothing can be looked for.

    static QuestionWords of(std::string_view question);
    /// Whether what they ask of their own is said there of somebody else: "Ben's shoe size" for "my shoe size".
    bool isOfSomebodyElse(std::string_view text) const;
    /// A word without what shows number, time or owner: "plumber's", "resetting", "keys".
    static std::string stem(std::string_view word);
    /// The stems of a text, in its order.
    static std::vector<std::string> stems(std::string_view text);

    bool operator==(const QuestionWords&) const = default;
};

} // namespace quorvell
