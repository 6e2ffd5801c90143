// SPDX-License-Identifier: MIT
// What is said to an assistant as to a person, and answered in a sentence: moods, wishes, "will you marry me".
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

struct ChatReplies {
    /// A reply that claims nothing and leaves everything as it is. Nothing for words that may ask for something.
    static std::optional<std::string_view> to(std::string_view core);
};

} // namespace quorvell
