// SPDX-License-Identifier: MIT
// One matter that can be asked about: everything that the conversation has to know of it.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/CueWeights.h"
#include "Understanding/dialogue/RequestKind.h"
#include "Understanding/dialogue/TrailingWish.h"
#include "Understanding/dialogue/memory/ToolRequest.h"
#include "Understanding/words/CueWords.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

/// A row of functions and tables, without state; what a skill has nothing to say to stays empty. Those that give an
/// optional give nothing where they do not apply.
struct Skill {
    using Step = std::optional<RuleStep>;

    std::string_view name{};
    std::span<const std::string_view> tools{}; ///< Whose results it takes.
    /// Which calls of them are its own, where it shares a tool with another skill; empty for all that nobody else owns.
    bool (*owns)(const ToolRequest& call) = nullptr;
    std::span<const CueWords> (*cues)() = nullptr;
    std::span<const CueWeights> weights{}; ///< Of its cues, and of the common ones for its kinds.
    std::span<const RequestKind> kinds{}; ///< Where the evidence for two is the same, the earlier is tried first.
    std::span<const TrailingWish> trailingWishes{};

    /// What can be done with the tools that are offered, behind "I can"; empty for nothing.
    std::string (*ability)(const RuleSurroundings& around) = nullptr;
    std::string_view example{}; ///< A request, where its first tool is offered.

    /// An utterance as it was said, opening and closing words too, that is no answer to any question.
    std::optional<Request> (*readSaid)(const std::string& words, const RuleSurroundings& around) = nullptr;
    /// A whole utterance that can be nothing else, read before anything is weighed.
    std::optional<Request> (*readPlain)(const std::string& core, const RuleSurroundings& around) = nullptr;
    /// One that asks for nothing by itself, read when nothing else was understood.
    std::optional<Request> (*readStatement)(const std::string& core, const RuleSurroundings& around) = nullptr;
    /// Another time for a thing that was named before and cannot stay as it is: "remind me on tuesday at 9 am instead".
    std::optional<Request> (*readElsewhere)(const std::string& thing, const RequestReading& reading,
        const std::string& words, const RuleSurroundings& around) = nullptr;

    /// A question that none of its kinds could look up: as near as can be looked up. Changes nothing.
    std::optional<Request> (*readQuestion)(const RequestReading& reading, const RuleSurroundings& around) = nullptr;
    /// What the user is asked before that call is made for words that did not wish for it; empty for a call that only
    /// looks something up.
    std::string (*questionBefore)(const ToolRequest& call) = nullptr;

    /// What follows from a result of one of its tools.
    RuleStep (*takeResult)(const ToolRequest& call, const ToolResult& result, RequestMemory memory,
        const RuleSurroundings& around) = nullptr;

    /// Where another skill knows nothing of a thing that was to be changed: whether it is one of its own. `said` is
    /// what is said otherwise.
    Step (*lookFurther)(const std::string& said, const RequestMemory& memory, const RuleSurroundings& around) = nullptr;

    /// What a call of one of its tools changed, behind "I": "added milk to your shopping list". Empty where the result
    /// says that nothing was changed.
    std::string (*whatWasDone)(const ToolRequest& call, const ToolResult& result) = nullptr;

    // Of what was last talked about, where that is a matter of this skill:
    bool undoesByItself = false; ///< `undo` knows what was done last; none of that is among the acts that are kept.
    /// Words that make sense only behind it, tried before anything else is: "add butter", right after a list was read.
    /// `words` are as they were said. Never a question that is open.
    Step (*goOn)(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around) = nullptr;
    /// The same behind any matter, where the words name something that this skill has in mind: "I bought the flour",
    /// where flour stands on the list.
    Step (*comeBack)(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around) = nullptr;
    /// "Stop", where something of its own may be sounding.
    Step (*stop)(RequestMemory memory, const RuleSurroundings& around) = nullptr;
    /// "Cancel that."
    Step (*undo)(RequestMemory memory, const RuleSurroundings& around) = nullptr;
    /// "Also buy milk."
    Step (*addAnother)(const std::string& words, RequestMemory memory, const RuleSurroundings& around) = nullptr;
    /// "No, tomorrow", "half an hour later": another time, or a further day.
    Step (*retime)(const Wish& wish, RequestMemory memory, const RuleSurroundings& around) = nullptr;

    // With a thing of its own from the list that was told:
    RuleStep (*changeListed)(
        const Wish& wish, const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around) = nullptr;
    /// "The second one."
    RuleStep (*pointAt)(const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around) = nullptr;
};

} // namespace quorvell
