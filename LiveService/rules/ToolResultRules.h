#pragma once

#include "LiveService/rules/ConversationMemory.h"

#include <string_view>
#include <vector>

namespace quorvell {

/// What a tool's result leaves to be remembered. Results come from outside: what cannot be read is left out.
struct ToolResultRules {
    /// The open question of a set_reminder result, if it asks one. `question` is how it was worded.
    static PendingQuestion questionIn(std::string_view result, std::string_view question);
    static std::vector<FoundNote> notesIn(std::string_view result);
};

} // namespace quorvell
