// SPDX-License-Identifier: MIT
#include "Understanding/skills/facts/FactSkill.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/facts/FactCues.h"
#include "Understanding/skills/facts/FactWords.h"
#include "Understanding/skills/notes/AnswerReply.h"
#include "Understanding/skills/notes/NoteIntent.h"
#include "Understanding/skills/notes/NoteRules.h"
#include "Understanding/skills/notes/NotebookQuestion.h"
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

RuleStep forget(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    return {ToolCalls::call(around, "remember_about_them", {{"forget", words}}, "forget things about you"),
        std::move(memory)};
}

std::optional<RuleStep> takeChoice(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    const auto fact = Pointing::at(memory.found, core, around);
    return fact ? std::optional(forget(fact->id, std::move(memory), around)) : std::nullopt;
}

const QuestionKind whichFact{takeChoice};

RuleStep askWhich(const ToolResult& result, RequestMemory memory)
{
    memory.found = ToolResults::things(result.json(), "facts", {.skill = "facts", .title = "fact"});
    std::string question = "I know more than one thing about that.";
    for (const FoundThing& fact : memory.found)
        question += " " + AnswerReply::toThem(fact.title);
    return RuleStep::asking(
        {.kind = &whichFact, .question = question + " Which one should I forget?"}, std::move(memory));
}

Found readPlain(const std::string& core, const RuleSurroundings& around)
{
    // Before the calendar takes "the booking number" for a booking.
    if (around.offers("find_in_notebook") && NotebookQuestion::asksForKept(core)) {
        if (auto question = NotebookQuestion::readOwn(core))
            return Request{.answer = [question = *std::move(question)](
                                         RequestMemory memory, const RuleSurroundings& surroundings) {
                return NoteRules::ask(question, std::move(memory), surroundings);
            }};
    }
    const std::string what = around.offers("remember_about_them") ? NotebookQuestion::forgotten(core) : std::string();
    if (what.empty())
        return std::nullopt;
    return Request{.answer = [what](RequestMemory memory, const RuleSurroundings& surroundings) {
        return forget(what, std::move(memory), surroundings);
    }};
}

/// "I'm allergic to peanuts", "my name is Priya": told for good, so that remembering it is offered by the tool.
Found readStatement(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern lasting(
        "^(?:my (?:full |first |last )?name(?: is|['’]s) \\S+(?: \\S+)?"
        "|i(?:['’]m| am) (?:allergic to .+|(?:a )?(?:vegetarian|vegan|diabetic|left[- ]handed|right[- ]handed|colou?r "
        "?blind|deaf|blind)"
        "|(?:gluten|lactose) intolerant|an? "
        "(?:nurse|teacher|student|doctor|lawyer|engineer|driver|cook|writer|programmer|pensioner))"
        "|i (?:live|work) (?:in|at|as|for|near) .+|i (?:do not|don['’]?t|never) (?:eat|drink|smoke) .+"
        "|my favou?rite [\\w ]{3,30} (?:is|are) .+"
        "|my "
        "(?:wife|husband|partner|son|daughter|mother|father|mom|mum|dad|brother|sister|dog|cat|boss|doctor|dentist)(?:["
        "'’]s name)? "
        "is (?:called |named )?[\\w'’-]+)(?:,? by the way)?[.!]*$",
        Pattern::caseless);
    static const Pattern aside(",? by the way[.!]*$", Pattern::caseless);
    if (!around.offers("remember_about_them") || !lasting.find(core))
        return std::nullopt;
    auto fact = FactWords::read(aside.replaceAll(core, ""), FactWords::Certainty::told);
    return fact ? Found(remembering(*std::move(fact))) : std::nullopt;
}

std::string whatWasDone(const ToolRequest&, const ToolResult& result)
{
    const std::string fact = trimmed(result.string("fact").value_or(""), ".!");
    if (result.status() == ToolStatus::remembered)
        return "remembered this about you: " + fact;
    return result.status() == ToolStatus::forgotten ? "forgot this about you: " + fact : "";
}

RuleStep takeResult(const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings&)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    if (auto asked = ToolResults::confirming(call, result, "Should I remember that?", memory))
        return *std::move(asked);
    if (result.status() == ToolStatus::whichFact)
        return askWhich(result, std::move(memory));
    std::string reply = "I will remember that.";
    if (result.status() == ToolStatus::forgotten)
        reply = "I have forgotten it: " + result.string("fact").value_or("that.");
    else if (result.status() == ToolStatus::refused)
        reply = ToolResults::forUser(result.string("message").value_or("That is not possible."));
    else if (result.status() == ToolStatus::notRemembered)
        reply = "Okay, I will not remember that.";
    else if (result.status() == ToolStatus::known)
        reply = "I know that already.";
    return ToolResults::say(std::move(reply), std::move(memory));
}

std::string questionBefore(const ToolRequest& call)
{
    if (const auto arguments = parseJson(call.arguments); arguments && memberOf(*arguments, "forget"))
        return "Should I forget that?";
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
    .readPlain = readPlain,
    .readStatement = readStatement,
    .questionBefore = questionBefore,
    .takeResult = takeResult,
    .whatWasDone = whatWasDone,
};

} // namespace quorvell
