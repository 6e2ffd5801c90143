// SPDX-License-Identifier: MIT
// A line for the program itself and not for the assistant: it begins with "/" and a word.
#pragma once

#include "QuorvellCore/live/history/TypedMessage.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ChatWord {
    enum class Kind { help, mode, mute, usage, quit, unknown };

    Kind kind = Kind::unknown;
    std::string word{}; ///< As typed, without "/".
    std::string argument{}; ///< What follows, trimmed.

    /// Nothing when the message is for the assistant. What was pasted never commands the program.
    static std::optional<ChatWord> read(const TypedMessage& message);
    /// What /help prints.
    static std::string overview();
    /// For a word that is none.
    static std::string unknownText(const std::string& word);

    bool operator==(const ChatWord&) const = default;
};

} // namespace quorvell
