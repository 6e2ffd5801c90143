// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/acting/AgendaTopic.h"

#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/ToldSeries.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace quorvell {

void AgendaTopic::keepTold(std::vector<FoundThing> listed, RequestMemory& memory)
{
    ToldSeries::keepFirstTimes(listed);
    const auto told = static_cast<std::ptrdiff_t>(std::min(listed.size(), RequestMemory::mostTold));
    memory.untold.assign(listed.begin() + told, listed.end());
    listed.resize(static_cast<std::size_t>(told));
    memory.found = std::move(listed);
}

RuleStep AgendaTopic::tellRest(RequestMemory memory)
{
    if (memory.untold.empty())
        return {"That was all.", std::move(memory)};
    keepTold(std::exchange(memory.untold, {}), memory);
    std::string told;
    for (const FoundThing& thing : memory.found)
        told += (told.empty() ? "" : " ") + std::string(thing.skill == AgendaCalls::skill ? "" : "A reminder, ")
            + AgendaReply::named(thing) + ".";
    const std::size_t others = memory.untold.size();
    return {told + (others > 0 ? " And " + std::to_string(others) + " more." : ""), std::move(memory)};
}

void AgendaTopic::talkAbout(const FoundThing& event, RequestMemory& memory)
{
    memory.event = event;
    memory.talkOf(AgendaCalls::skill);
}

} // namespace quorvell
