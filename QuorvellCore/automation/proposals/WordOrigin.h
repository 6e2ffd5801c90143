// SPDX-License-Identifier: MIT
// Where the words of an argument came from.
#pragma once

#include <map>
#include <string>

namespace quorvell {

/// From the most trusted to the least. Where words could have come from two, the more trusted counts only when it holds
/// them whole.
enum class WordOrigin {
    user, ///< Their own words, spoken or typed; a pasted piece is not among them.
    notebook, ///< What they keep, not what was clipped from elsewhere.
    model, ///< Nobody gave them: the model's own wording.
    account, ///< A connected account: mail, calendars, contacts.
    screen, ///< What is shown, or was read there.
    web, ///< A look-up, or a pasted piece.
};

/// By the name of the argument: "text", "address", "path" ...
using WordOrigins = std::map<std::string, WordOrigin, std::less<>>;

/// Others could have put them there.
constexpr bool isOutside(WordOrigin origin)
{
    return origin == WordOrigin::account || origin == WordOrigin::screen || origin == WordOrigin::web;
}

} // namespace quorvell
