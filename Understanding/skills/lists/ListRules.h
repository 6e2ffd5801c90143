// SPDX-License-Identifier: MIT
// What keep_note is asked about lists, and what the user is asked first.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/ToolRequest.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListIntent.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ListRules {
    static constexpr std::string_view skill = ListCalls::skill;

    static const QuestionKind whatItems; ///< That are to be added, ticked, taken off.
    static const QuestionKind whatName; ///< Of a new list.
    static const QuestionKind whatTitle; ///< A list gets.
    static const QuestionKind whereTo; ///< The list that things are to be added to, which stand under "add".
    static const QuestionKind whichList;
    static const QuestionKind whichItem;

    static RuleStep answer(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// Whether the things should be added, where nobody clearly wished for it.
    static RuleStep offer(const ListIntent& intent, const std::string& lead, RequestMemory memory);
    /// To which of the lists of these names the things go.
    static RuleStep askWhere(
        const ListIntent& intent, RequestMemory memory, const std::vector<std::string>& names = {});
    /// Whether a call of keep_note is about a list.
    static bool isOfLists(const ToolRequest& call);
    /// What the user is asked before that call is made for words that did not wish for it; empty where it only looks.
    static std::string questionBefore(const ToolRequest& call);
};

} // namespace quorvell
