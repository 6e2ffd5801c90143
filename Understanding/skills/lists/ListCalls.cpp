// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListCalls.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderRules.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

RuleStep ListCalls::call(const Json& arguments, const RequestMemory& memory, const RuleSurroundings& around)
{
    return {ToolCalls::call(around, tool, arguments, "keep lists"), memory};
}

RuleStep ListCalls::confirming(std::string question, const Json& arguments, const RequestMemory& memory)
{
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = std::move(question),
                                .tool = tool,
                                .arguments = dumpJson(arguments)},
        memory);
}

Json ListCalls::withList(Json arguments, const std::string& id)
{
    arguments.erase("list");
    arguments["id"] = id;
    return arguments;
}

Json ListCalls::withItem(Json arguments, const std::string& words, const std::string& item)
{
    constexpr std::array itemKeys{"tick", "untick", "remove"};
    for (const char* key : itemKeys)
        if (auto items = readStrings(arguments, key)) {
            std::ranges::replace(*items, words, item);
            arguments[key] = *items;
        }
    if (readString(arguments, "replace") == words)
        arguments["replace"] = item;
    return arguments;
}

std::string ListCalls::titleOf(const std::string& name)
{
    static const Pattern whole("\\b(?:lists?|checklists?)$| for ", Pattern::caseless);
    const bool isPlain = std::ranges::count(name, ' ') <= 1 && !name.ends_with('s');
    return withUpperCaseFirst(name) + (isPlain && !whole.find(name) ? " list" : "");
}

bool ListCalls::isOfDuties(std::string_view name)
{
    static const Pattern duties("^(?:(?:things )?to[ -]?dos?|todos?|tasks?|chores|jobs|errands)$", Pattern::caseless);
    return duties.find(name).has_value();
}

std::optional<RuleStep> ListCalls::byReminders(
    const Json& arguments, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (!around.offers("set_reminder"))
        return std::nullopt;
    const auto ticked = readStrings(arguments, "tick");
    if (memberOf(arguments, "show"))
        return ReminderRules::change({.kind = ReminderChange::Kind::list}, memory, around);
    if (memberOf(arguments, "clear") || memberOf(arguments, "delete"))
        return ReminderRules::change({.kind = ReminderChange::Kind::cancelAll}, memory, around);
    if (ticked && ticked->size() == 1)
        return ReminderRules::change({.kind = ReminderChange::Kind::done, .task = ticked->front()}, memory, around);
    return std::nullopt;
}

} // namespace quorvell
