// SPDX-License-Identifier: MIT
// What needs no tool: greetings, thanks, what this service can do.
#pragma once

#include "Understanding/dialogue/SkillSummary.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SmallTalk {
    /// The answer, when `core` (an utterance without opening and closing words) is one of the phrases known here.
    /// `lastReply` is what was said before.
    static std::optional<std::string> answer(
        std::string_view core, std::string_view lastReply, const SkillSummary& skills);

    /// "Yes", "okay" and the like.
    static bool isAgreement(std::string_view core);
    static bool isCancel(std::string_view core);
    /// A cancel that means what was done last, where there is such a thing.
    static bool isUndo(std::string_view core);
};

} // namespace quorvell
