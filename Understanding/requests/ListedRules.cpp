// SPDX-License-Identifier: MIT
#include "Understanding/requests/ListedRules.h"

#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/requests/SkillTable.h"

#include <string>
#include <utility>

namespace quorvell {

namespace {

std::optional<RuleStep> change(const Wish& wish, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto place = ListPlace::read(wish.title);
    if (!place || memory.found.empty())
        return std::nullopt;
    const auto index = place->among(memory.found.size());
    if (!index)
        return RuleStep{std::string(PlainReplies::notThatMany), memory};
    const FoundThing& thing = memory.found[*index];
    const Skill* skill = SkillTable::named(thing.skill);
    return skill && skill->changeListed ? std::optional(skill->changeListed(wish, thing, memory, around))
                                        : std::nullopt;
}

std::optional<RuleStep> pointAt(
    const std::optional<ListPlace>& place, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::size_t count = memory.found.size();
    const auto only = count == 1 ? std::optional<std::size_t>(0) : std::nullopt;
    const auto index = count > 0 && place ? place->among(count) : only;
    if (!index)
        return std::nullopt;
    const FoundThing& thing = memory.found[*index];
    const Skill* skill = SkillTable::named(thing.skill);
    return skill && skill->pointAt ? std::optional(skill->pointAt(thing, memory, around)) : std::nullopt;
}

} // namespace

std::optional<RuleStep> ListedRules::answer(
    const Request& request, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (request.pointsIntoList)
        return pointAt(request.place, memory, around);
    return request.wish ? change(*request.wish, memory, around) : std::nullopt;
}

} // namespace quorvell
