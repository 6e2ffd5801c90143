// SPDX-License-Identifier: MIT
// All skills, and what they are together. A new one is a row here and a folder of its own.
#pragma once

#include "Understanding/dialogue/Skill.h"
#include "Understanding/words/CueTable.h"

#include <set>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

struct SkillTable {
    /// Where the evidence for requests of two is the same, the earlier one goes first.
    static std::span<const Skill* const> all();
    /// Nothing where there is none.
    static const Skill* named(std::string_view name);
    /// Whose matter a call is: that of its tool, where no other skill takes it for its own.
    static const Skill* ofCall(const ToolRequest& call);
    /// The words of all skills and the common ones.
    static const CueTable& cues();

    /// What can be done with the tools that the session offered, as a sentence.
    static std::string abilities(const RuleSurroundings& around);
    static std::string help(const RuleSurroundings& around);
    /// For what only a hosted model could do.
    static std::string cannot(const RuleSurroundings& around);
    /// For what may need one, or other words.
    static std::string notUnderstood(const RuleSurroundings& around);
};

} // namespace quorvell
