// SPDX-License-Identifier: MIT
// How people speak of a list in a sentence.
#pragma once

#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ListPhrase {
    /// A pattern.
    static inline const std::string listWord = "(?:check[ -]?)?(?:lists?|lsit|lst|lits)";

    struct Parts {
        std::string before;
        std::string list; ///< The name.
    };

    /// The name in "my shopping list", "the list of dog names", "our groceries"; empty for "my list". Nothing for words
    /// that name no list, or one of another kind: "my list of reminders".
    static std::optional<std::string> nameIn(std::string_view phrase);
    /// A pattern of the words that lead to a list, apart by "|".
    static std::string links(std::string_view words) { return "(?:^|\\s)(?:" + std::string(words) + ")(?=\\s)"; }
    /// "Milk and eggs" and "shopping" of "milk and eggs to my shopping list", cut at the last of those words behind
    /// which a list follows.
    static std::optional<Parts> endingIn(const std::string& text, const Pattern& links);
    /// The same; what is said behind the list stays with the thing: "the post office to my errands list for saturday".
    static std::optional<Parts> itemsIn(const std::string& text, const Pattern& links);

    /// With one blank between words, and without the signs that end a sentence.
    static std::string inOneLine(std::string_view text);
    /// Without "for me", "now" and signs at its ends.
    static std::string withoutEnds(std::string_view text);
    /// Names of what is no list of the notebook: reminders, contacts, songs.
    static bool isKeptElsewhere(const std::string& name);
    /// What nobody puts into the name of a list: the words belong to what is done with it.
    static bool isSentence(const std::string& name);
};

} // namespace quorvell
