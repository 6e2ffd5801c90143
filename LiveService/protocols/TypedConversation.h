// SPDX-License-Identifier: MIT
// Answers a typed conversation that comes whole with each request. Pure.
#pragma once

#include "LiveService/conversation/IdSource.h"
#include "QuorvellCore/live/wire/openai/OpenAIItem.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <string>
#include <vector>

namespace quorvell {

struct TypedConversation {
    static constexpr std::size_t mostItems = 48; ///< The last so many are looked at.

    /// What the rules do about the last item: the user's words, or the output of a tool. What they had in mind by
    /// then is found again by going through the items before it.
    static RuleStep answer(const std::vector<OpenAIItem>& items, const RuleSurroundings& surroundings);

    /// The answer as the protocol's events, one text each.
    static std::vector<std::string> events(const RuleStep& step, const IdSource& ids);
};

} // namespace quorvell
