// SPDX-License-Identifier: MIT
// Keeps what was changed, and takes it back: one call after the other, then one sentence about all. Pure.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ActBook {
    /// Puts down what the result says that `call` changed, if anything. `before` is the memory from before the result,
    /// `what` how the skill words it: "added milk to your shopping list".
    static void record(const ToolRequest& call, const ToolResult& result, std::string_view skill, std::string what,
        const RequestMemory& before, RuleStep& step);

    /// The acts of the last `count` requests, the newest first.
    static std::vector<DoneAct> newest(const RequestMemory& memory, std::size_t count);
    /// Those of the request before the last.
    static std::vector<DoneAct> beforeLast(const RequestMemory& memory);
    /// Those in which all the words stand that name something; of several requests nothing but those of the best.
    static std::vector<std::vector<DoneAct>> named(const RequestMemory& memory, const std::string& words);
    /// Whether the utterance before this one changed something.
    static bool wasJustDone(const RequestMemory& memory);
    /// Whether it wished for something that was not done: what was done before it is not what is to be taken back.
    static bool hasJustFailed(const RequestMemory& memory);

    /// Begins with the first act of `plan`; nothing is called for one that cannot be taken back.
    static RuleStep takeBack(TakingBack plan, RequestMemory memory, const RuleSurroundings& around);
    static bool isTakingBack(const ToolRequest& call, const RequestMemory& memory);
    /// What follows from the result of such a call. Where words are to be answered afterwards, `takingBack` of the
    /// memory holds nothing but them.
    static RuleStep takeResult(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);

    /// "added milk to your shopping list, and moved Lunch"; of many the first ones.
    static std::string inWords(const std::vector<DoneAct>& acts);
};

} // namespace quorvell
