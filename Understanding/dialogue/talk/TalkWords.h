// SPDX-License-Identifier: MIT
// What people say to each other rather than ask for: praise, doubt, "I don't mind", "tell me a joke".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvell {

enum class TalkKind : std::uint8_t {
    joke,
    goodbye,
    howAreYou,
    whoAreYou,
    wrong, ///< "That is not what I asked for."
    repeat,
    repeatSlowly,
    explain,
    praise,
    indifference, ///< "I don't care."
    agreement, ///< "You got it right."
    stop,
    startAgain,
    wait, ///< "Let me think."
    quit, ///< "How do I turn this off?"
};

/// Words that say that and nothing else, in any order and with any politeness around them: a row is known by a few key
/// phrases, and by the words that may stand around these. Nothing for words that may ask for something else.
std::optional<TalkKind> talkOf(std::string_view core);

} // namespace quorvell
