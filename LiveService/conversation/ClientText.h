// SPDX-License-Identifier: MIT
// What a text from the client is: what the user typed or said, or an event of the client itself.
#pragma once

#include "Understanding/dialogue/HeardDoubts.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ClientText {
    enum class Kind {
        request, ///< `text` are the user's words.
        greeting, ///< The user called; `text` is their name, or empty.
        words, ///< `text` is to be said to them as it stands.
        nothing, ///< Instructions that ask for no answer here.
    };
    enum class Manner { voiced, shown };

    Kind kind = Kind::request;
    std::string text{};
    std::optional<HeardDoubts> doubts{}; ///< Of spoken words; of typed ones there are none.
    Manner manner = Manner::voiced; ///< How the answer is wanted.

    bool operator==(const ClientText&) const = default;

    /// A user message for the backend: plain words, or one of the client's marked forms ("[They typed] ...").
    static ClientText fromMessage(std::string_view message);
    /// Instructions for the voice.
    static ClientText fromInstructions(std::string_view instructions);
};

} // namespace quorvell
