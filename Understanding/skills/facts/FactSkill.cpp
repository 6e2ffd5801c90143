// SPDX-License-Identifier: MIT
#include "Understanding/skills/facts/FactSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/facts/FactCues.h"
#include "Understanding/skills/facts/FactWords.h"
#include "Understanding/skills/notes/NoteIntent.h"
#include "Understanding/skills/notes/NoteRules.h"
#include "Understanding/skills/reminders/ReminderRules.h"
#include "Understanding/words/CommonCues.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr CueWeights weights[] = {
    {FactCues::remember, {{{"remember", 9}}}},
    {FactCues::know, {{{"remember", 9}}}},
};

Request remembering(std::string fact)
{
    return {.answer = [fact = std::move(fact)](RequestMemory memory, const RuleSurroundings& around) {
        return RuleStep{ToolCalls::call(around, "remember_about_them", {{"fact", fact}}, "remember things about you"),
            std::move(memory)};
    }};
}

Request writingDown(const std::string& content)
{
    return {.answer = [intent = NoteIntent::keeping(content)](RequestMemory memory, const RuleSurroundings& around) {
        return NoteRules::answer(intent, std::move(memory), around);
    }};
}

/// "Remember ..." may mean a fact, something to write down, or something to do.
Found remember(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern duty("^to\\b", Pattern::Case::insensitive);
    const bool isToKnow = reading.has(FactCues::know);
    const auto certainty = isToKnow ? FactWords::Certainty::told : FactWords::Certainty::likely;
    if (around.offers("remember_about_them")) {
        if (auto fact = FactWords::read(reading.content, certainty))
            return remembering(*std::move(fact));
    }
    // "Is there anything I should remember?"
    if (reading.content.empty() && (reading.has(CommonCues::what) || reading.has(CommonCues::any)))
        return ReminderRules::request(ReminderChange{.kind = ReminderChange::Kind::list});
    const bool isTask = duty.find(reading.content) || !FactWords::isStatement(reading.content);
    return isTask && !isToKnow ? ReminderRules::request(ReminderIntent::of(reading.content))
                               : writingDown(reading.content);
}

constexpr RequestKind kinds[] = {{"remember", {}, remember}};

constexpr TrailingWish trailingWishes[] = {
    {"(?:remember|(?:do not|don['’]?t|never) forget|keep) (?:that|this|it)(?: in mind)?(?: about me)?",
        "remember that "},
};

constexpr std::string_view tools[] = {"remember_about_them"};

RuleStep takeResult(const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings&)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    if (auto asked = ToolResults::confirming(call, result, "Should I remember that?", memory))
        return *std::move(asked);
    std::string reply = "I will remember that.";
    if (result.status() == ToolStatus::refused)
        reply = ToolResults::forUser(result.string("message").value_or("That is not possible."));
    else if (result.status() == ToolStatus::notRemembered)
        reply = "Okay, I will not remember that.";
    else if (result.status() == ToolStatus::known)
        reply = "I know that already.";
    return ToolResults::say(std::move(reply), std::move(memory));
}

std::string questionBefore(const ToolRequest&)
{
    return "Should I remember that?";
}

} // namespace

constinit const Skill FactSkill::row{
    .name = "facts",
    .tools = tools,
    .cues = FactCues::rows,
    .weights = weights,
    .kinds = kinds,
    .trailingWishes = trailingWishes,
    .questionBefore = questionBefore,
    .takeResult = takeResult,
};

} // namespace quorvell
