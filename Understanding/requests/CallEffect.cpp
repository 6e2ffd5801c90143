// SPDX-License-Identifier: MIT
#include "Understanding/requests/CallEffect.h"

#include "QuorvellCore/live/tools/ToolTraits.h"
#include "Understanding/dialogue/Skill.h"
#include "Understanding/requests/SkillTable.h"

#include <variant>

namespace quorvell {

bool CallEffect::isLookUp(const ToolRequest& call)
{
    const ToolTraits* traits = ToolTraits::find(call.name);
    const Skill* skill = SkillTable::ofCall(call);
    return (traits && !traits->changes) || (skill && skill->questionBefore && skill->questionBefore(call).empty());
}

bool CallEffect::leadsToChange(const RuleStep& step, const RequestMemory& before)
{
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    if (!call)
        return step.memory.pending.isOpen() && step.memory.pending != before.pending;
    // An event is looked up before it is changed.
    const Wish::Kind wish = step.memory.wish.kind;
    const bool isWished = wish == Wish::Kind::move || wish == Wish::Kind::cancel;
    return !isLookUp(*call) || (isWished && step.memory.wish != before.wish);
}

} // namespace quorvell
