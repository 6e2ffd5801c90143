// SPDX-License-Identifier: MIT
#include "Understanding/requests/RequestRules.h"

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/SmallTalk.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/FollowUpRules.h"
#include "Understanding/requests/ListedRules.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/words/RequestText.h"

#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

/// What is said, be it by the rules themselves or in place of a tool that is not offered, can be repeated.
RuleStep remembered(RuleStep step)
{
    if (const auto* text = std::get_if<std::string>(&step.answer))
        step.memory.lastReply = *text;
    return step;
}

/// "No, tomorrow", and more of the same, are about what was last talked about.
Step answerOfTopic(const Request& request, const RequestMemory& memory, const RuleSurroundings& around)
{
    const Skill* skill = SkillTable::named(memory.topic);
    if (!skill)
        return std::nullopt;
    if (!request.another.empty())
        return skill->addAnother ? skill->addAnother(request.another, memory, around) : std::nullopt;
    const bool isRetimed = request.wish && request.wish->kind == Wish::Kind::move && request.wish->title.empty()
        && (!request.wish->when.empty() || request.wish->minutes != 0);
    return isRetimed && skill->retime ? skill->retime(*request.wish, memory, around) : std::nullopt;
}

RuleStep answerRequest(const Request& request, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto step = ListedRules::answer(request, memory, around))
        return *std::move(step);
    if (auto step = answerOfTopic(request, memory, around))
        return *std::move(step);
    return request.answer(std::move(memory), around);
}

/// "Cancel that", of what was last set or kept.
Step undo(const RequestMemory& memory, const RuleSurroundings& around)
{
    const Skill* skill = SkillTable::named(memory.topic);
    return skill && skill->undo ? skill->undo(memory, around) : std::nullopt;
}

/// What needs no tool, said at any time. Small talk leaves an open question open.
Step answerPlainly(
    const std::string& core, const std::string& opened, RequestMemory memory, const RuleSurroundings& around)
{
    if (SmallTalk::isUndo(core) && !memory.pending.isOpen()) {
        if (auto step = undo(memory, around))
            return step;
    }
    if (SmallTalk::isCancel(core)) {
        const bool wasAsking = std::exchange(memory.pending, {}).isOpen();
        return RuleStep{wasAsking ? std::string(PlainReplies::dropped) : "Okay.", std::move(memory)};
    }
    // It chooses nothing, and is no task and no note.
    static const Pattern yes("^(?:yes|yeah|yep|yup|sure)\\b", Pattern::Case::insensitive);
    const bool isYes = yes.find(core) && SpokenConsent::isAffirmative(core);
    if (memory.pending.isOpen() && (isYes || SmallTalk::isAgreement(core))) {
        const std::string again = std::string(PlainReplies::notUnderstood) + " " + memory.pending.question;
        return RuleStep{again, std::move(memory)};
    }
    const SkillSummary skills{SkillTable::abilities(around), SkillTable::help(around)};
    // Thanks are closing words, too: nothing but them may be all that was said.
    for (const std::string& said : {core, opened, std::string(isYes ? "yes" : core)}) {
        if (const auto text = SmallTalk::answer(said, memory.lastReply, skills, around))
            return RuleStep{*text, std::move(memory)};
    }
    return std::nullopt;
}

RuleStep answered(std::string_view words, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string opened = RequestText::withoutOpening(words);
    const std::string core = RequestText::withoutClosing(opened);
    if (QuestionKind::isYesOrNo(memory.pending) && SpokenConsent::agreesTo(memory.pending.question, words)) {
        PendingQuestion asked = std::exchange(memory.pending, {});
        return {ToolRequest{std::move(asked.tool), std::move(asked.arguments)}, std::move(memory)};
    }
    if (auto step = answerPlainly(core, opened, memory, around))
        return *std::move(step);
    if (const auto request = RequestReader::readSaid(words, around))
        return request->answer(std::move(memory), around);
    if (memory.pending.isOpen()) {
        if (auto step = FollowUpRules::answer(core, memory, around))
            return *std::move(step);
    }
    const RequestMood mood = moodOf(words);
    const auto request =
        mood == RequestMood::question ? RequestReader::readQuestion(core, around) : RequestReader::read(core, around);
    if (request)
        return CarefulStep::take(answerRequest(*request, memory, around), *request, mood, memory);
    return {SkillTable::cannot(around), std::move(memory), true};
}

} // namespace

RuleStep RequestRules::answerWords(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around)
{
    RuleStep step = remembered(answered(words, memory, around));
    // Only what was asked about goes, and nothing once something else was said.
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    const bool isAgreed = call && memory.pending.isOpen() && call->arguments == memory.pending.arguments;
    if (!isAgreed && step.memory.pending.arguments != memory.pending.arguments)
        step.memory.batch = {};
    return step;
}

RuleStep RequestRules::answerResult(
    const ToolRequest& call, std::string_view text, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto result = ToolResult::parse(text);
    if (!result)
        return ToolResults::say("That did not work.", memory);
    const Skill* skill = SkillTable::ofTool(call.name);
    if (skill && skill->takeResult)
        return remembered(skill->takeResult(call, *result, memory, around));
    return ToolResults::say(ToolResults::failure(*result).value_or("Done."), memory);
}

} // namespace quorvell
