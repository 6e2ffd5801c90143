// SPDX-License-Identifier: MIT
#include "Understanding/requests/SkillTable.h"

#include "Understanding/skills/alarms/AlarmSkill.h"
#include "Understanding/skills/calendar/AgendaSkill.h"
#include "Understanding/skills/clock/ClockSkill.h"
#include "Understanding/skills/facts/FactSkill.h"
#include "Understanding/skills/help_mode/HelpModeSkill.h"
#include "Understanding/skills/lists/ListSkill.h"
#include "Understanding/skills/more/MoreSkill.h"
#include "Understanding/skills/notes/NoteSkill.h"
#include "Understanding/skills/reminders/ReminderSkill.h"
#include "Understanding/skills/screen/ScreenSkill.h"
#include "Understanding/skills/sums/SumSkill.h"
#include "Understanding/words/CommonCues.h"

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

constexpr const Skill* table[] = {
    &ClockSkill::row,
    &SumSkill::row,
    &ReminderSkill::row,
    &AlarmSkill::row,
    &FactSkill::row,
    &AgendaSkill::row,
    &NoteSkill::row,
    &ListSkill::row,
    &HelpModeSkill::row,
    &ScreenSkill::row,
    &MoreSkill::row,
};

CueTable readCues()
{
    CueTable cues;
    cues.add(CommonCues::rows());
    for (const Skill* skill : table) {
        if (skill->cues)
            cues.add(skill->cues());
    }
    return cues;
}

/// "set reminders", "keep your calendar"; what holds a list of its own comes last.
std::vector<std::string> abilitiesOf(const RuleSurroundings& around)
{
    std::vector<std::string> abilities;
    for (const Skill* skill : table) {
        std::string ability = skill->ability ? skill->ability(around) : std::string();
        if (!ability.empty())
            abilities.push_back(std::move(ability));
    }
    std::stable_partition(abilities.begin(), abilities.end(),
        [](const std::string& ability) { return ability.find(" and ") == std::string::npos; });
    return abilities;
}

} // namespace

std::span<const Skill* const> SkillTable::all()
{
    return table;
}

const Skill* SkillTable::named(std::string_view name)
{
    const auto skill = std::ranges::find(table, name, &Skill::name);
    return skill != std::ranges::end(table) ? *skill : nullptr;
}

const Skill* SkillTable::ofCall(const ToolRequest& call)
{
    const Skill* whole = nullptr;
    for (const Skill* skill : table) {
        if (std::ranges::find(skill->tools, call.name) == skill->tools.end())
            continue;
        if (skill->owns && skill->owns(call))
            return skill;
        if (!skill->owns && !whole)
            whole = skill;
    }
    return whole;
}

const CueTable& SkillTable::cues()
{
    static const CueTable cues = readCues();
    return cues;
}

std::string SkillTable::abilities(const RuleSurroundings& around)
{
    const auto abilities = abilitiesOf(around);
    if (abilities.empty())
        return "I have no tools in this conversation.";
    const bool endsInList = abilities.back().find(" and ") != std::string::npos;
    std::string said = "I can " + abilities.front();
    for (std::size_t index = 1; index < abilities.size(); ++index) {
        const bool isLast = index + 1 == abilities.size();
        said += (!isLast ? ", " : endsInList ? ", and I can " : " and ") + abilities[index];
    }
    return said + ".";
}

namespace {

std::string abilitiesHere(const RuleSurroundings& around)
{
    const std::string can = SkillTable::abilities(around);
    return can.starts_with("I can") ? "On this computer, " + can : can;
}

} // namespace

std::string SkillTable::help(const RuleSurroundings& around)
{
    const auto example = std::ranges::find_if(
        table, [&](const Skill* skill) { return !skill->example.empty() && around.offers(skill->tools.front()); });
    return abilities(around)
        + (example != std::ranges::end(table) ? " For example: " + std::string((*example)->example) + "." : "");
}

std::string SkillTable::cannot(const RuleSurroundings& around)
{
    return "That needs an online model. " + abilitiesHere(around);
}

std::string SkillTable::notUnderstood(const RuleSurroundings& around)
{
    return "I did not understand that, or it needs an online model. " + abilitiesHere(around);
}

} // namespace quorvell
