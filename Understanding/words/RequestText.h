// SPDX-License-Identifier: MIT
// The user's words without what surrounds a request. Pure.
#pragma once

#include "QuorvellCore/text/Pattern.h"

#include <string>
#include <string_view>

namespace quorvell {

struct RequestText {
    static constexpr std::size_t longest = 2000; ///< User-perceived characters that the rules look at.

    /// Without "hey quorvell, could you please" before the request; empty when nothing else was said.
    static std::string withoutOpening(std::string_view words);
    /// Without ", please" and the like, and full stops, after it.
    static std::string withoutClosing(std::string_view words);
    /// Where the last words begin: what is looked for at the end is not looked for in a whole story.
    static std::size_t endOf(std::string_view text);
    /// Without the "uh" and "um" of spoken words behind the first one; those before it are an opening.
    static std::string withoutFillers(std::string_view words);
    /// Whether nothing is said by the words that would narrow a question down: "do I have on", "there".
    static bool isIdle(std::string_view words);
    /// Whether there are more words than anybody puts a time into. Reading a time in them would take long.
    static bool isStory(std::string_view words);
    /// With one space in place of what is left out.
    static std::string without(std::string_view words, const TextRange& range);
    /// As something to write down: first letter in upper case, no loose signs at the ends.
    static std::string written(std::string_view words);
    /// Lower case, letters and digits only, contractions taken apart; for comparing whole phrases.
    static std::string phrase(std::string_view words);
};

} // namespace quorvell
