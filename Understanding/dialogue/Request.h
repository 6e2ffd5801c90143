// SPDX-License-Identifier: MIT
// What somebody asks for, as a skill read it.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/words/ListPlace.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

struct Request {
    /// The call, the question or the reply that follows.
    std::function<RuleStep(RequestMemory memory, const RuleSurroundings& around)> answer{};
    /// What it does to a thing that is there already; nothing where it does no such thing.
    std::optional<Wish> wish{};
    /// Whether the words may be the answer to the open question instead. Without it they never are.
    std::function<bool(const PendingQuestion& asked, const RuleSurroundings& around)> mayAnswer{};
    /// More of what was just asked for, in these words: the skill of that goes first.
    std::string another{};
    /// It asks for one of the things that were told: that at `place`, or the only one. `answer` is for when there is no
    /// such thing.
    bool pointsIntoList = false;
    std::optional<ListPlace> place{};
    /// It is for other applications: words that are theirs ("message", "play") do not speak against it.
    bool isForOthers = false;
    /// The same about the thing of that name, of a request that names none.
    std::function<Request(const std::string& thing)> about{};
};

} // namespace quorvell
