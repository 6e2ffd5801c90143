// SPDX-License-Identifier: MIT
#include "Understanding/requests/RequestRules.h"

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/reach/OutOfReach.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/requests/AnswerWords.h"
#include "Understanding/requests/AsideRules.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/FollowUpRules.h"
#include "Understanding/requests/ForMe.h"
#include "Understanding/requests/ListedRules.h"
#include "Understanding/requests/OfferRules.h"
#include "Understanding/requests/PlainAnswers.h"
#include "Understanding/requests/PointingWords.h"
#include "Understanding/requests/ReachRules.h"
#include "Understanding/requests/RepairRules.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/requests/ResultMarks.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/requests/TalkedOfRules.h"
#include "Understanding/requests/UndoRules.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/words/PlainWording.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/WishCut.h"

#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

/// What is said, be it by the rules themselves or in place of a tool that is not offered, can be repeated.
RuleStep remembered(RuleStep step)
{
    if (auto* first = std::get_if<std::string>(&step.answer); first && !step.memory.further.said.empty())
        *first = std::exchange(step.memory.further.said, {}) + " " + *first;
    if (const auto* text = std::get_if<std::string>(&step.answer))
        step.memory.lastReply = *text;
    else
        step.memory.call = std::get<ToolRequest>(step.answer);
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

/// What only makes sense after what was talked about. A question that was asked once more behind something else need
/// not be what is answered; it stays open.
Step goneOn(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const bool isAsking = memory.pending.isOpen();
    if (isAsking && !memory.pending.isTakenUpAgain)
        return std::nullopt;
    const bool isBehindPassing = memory.passing.turn + 1 == memory.turn;
    const Skill* passing = isAsking || !isBehindPassing ? nullptr : SkillTable::named(memory.passing.skill);
    const Skill* topic = isAsking ? nullptr : SkillTable::named(memory.topic);
    Step step;
    for (const Skill* skill : {passing, topic})
        if (!step && skill && skill->goOn)
            step = skill->goOn(words, memory, around);
    for (const Skill* skill : SkillTable::all())
        if (!step && skill != topic && skill->comeBack)
            step = skill->comeBack(words, memory, around);
    if (step && isAsking && !step->memory.pending.isOpen())
        step->memory.pending = memory.pending;
    return step;
}

/// A question as near as it can be looked up: why there is a meeting is known to nobody here, whether there is one is;
/// a list is done when nothing is left on it.
std::string asLookUp(const std::string& core)
{
    static const Pattern why("^why (?=(?:is|are) there\\b|do (?:i|we) have\\b|am i\\b)", Pattern::caseless);
    static const Pattern isDone(
        "^(?:is|are) ((?:the|my|our) (?:\\S+ ){0,3}list) (?:all )?(?:done|finished|completed?|ready)(?: yet| now)?$",
        Pattern::caseless);
    static const Pattern any("^any (?!idea )(?=\\S+ )", Pattern::caseless);
    if (any.find(core))
        return any.replaceAll(core, "are there any ");
    if (const auto list = isDone.find(core))
        return "what is on " + list->texts[0];
    return why.replaceAll(core, "");
}

/// "Stop", right after something was told that may be sounding.
Step silenced(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern stop(
        "^(?:(?:okay|ok|all right|please)[,]? )?(?:stop|quiet|silence|enough|shut up)(?: it| that| now)?[.!]*$",
        Pattern::caseless);
    const Skill* skill = memory.pending.isOpen() ? nullptr : SkillTable::named(memory.topic);
    return skill && skill->stop && stop.find(core) ? skill->stop(memory, around) : std::nullopt;
}

bool putsNothingDown(
    const ToolRequest& call, const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern lastWords(
        "^make (?:it|that|them) |^(?:(?:no|nah|yes|ok|okay|oh|just)[, ]*)*keep (?:it|that|this|them)$",
        Pattern::caseless);
    const bool isNew = call.arguments.find("\"text\"") != std::string::npos;
    if (call.name == "set_reminder")
        return isNew && memory.topic.empty() && AnswerWords::isBareTime(core, around);
    return call.name == "keep_note" && isNew && lastWords.find(core);
}

RuleStep answerNew(
    std::string_view words, const std::string& said, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (auto step = TalkedOfRules::answer(said, memory, around))
        return *std::move(step);
    if (auto step = goneOn(std::string(words), memory, around))
        return *std::move(step);
    const RequestMood mood = moodOf(words);
    const std::string core = mood == RequestMood::question ? asLookUp(said) : said;
    if (const auto matter = OutOfReach::of(core))
        return ReachRules::answer(*matter, core, mood, memory, around);
    const auto request =
        mood == RequestMood::question ? RequestReader::readQuestion(core, around) : RequestReader::read(core, around);
    if (request) {
        RuleStep step = CarefulStep::take(answerRequest(*request, memory, around), *request, mood, memory);
        // "Sunday too" and "make it two notes" name nothing that could be put down.
        const auto* call = std::get_if<ToolRequest>(&step.answer);
        if (call && putsNothingDown(*call, core, memory, around))
            return {"I am not sure what that is for. Please say it in one sentence.", memory, true};
        return step;
    }
    if (auto step = mood == RequestMood::wish ? OfferRules::answer(core, memory, around) : std::nullopt)
        return *std::move(step);
    // Whether a model would know what to do with a wish that nobody here understood is not known either.
    return {
        mood == RequestMood::question ? SkillTable::cannot(around) : SkillTable::notUnderstood(around), memory, true};
}

/// Words behind an open question that want to know something themselves, or wish for what is not done here. A question
/// for free words takes wishes of any kind.
bool asksInTurn(const std::string& core, const PendingQuestion& asked)
{
    static const Pattern question(
        "^(?:what|who|where|why|which|whose|how (?:much|many|old|far|long|tall|is|are|do|does|did)"
        "|(?:is|are|was|were) (?:there|that|this|it|those|they)|(?:do|did|have) (?:i|you|we)|does (?:it|that|this|my)"
        "|am i|when (?:is|are|was|does|do))\\b(?! about| if)",
        Pattern::caseless);
    static const Pattern choice("^which (?:one|ones|of)\\b|^what i (?:want|mean|meant)\\b", Pattern::caseless);
    if (question.find(core))
        return !choice.find(core);
    return !asked.task.empty() && OutOfReach::of(core);
}

/// The question stays open behind an answer in words; behind anything else it is put aside.
RuleStep answerInTurn(
    std::string_view words, const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    RequestMemory meanwhile = memory;
    meanwhile.pending = {};
    RuleStep step = answerNew(words, core, meanwhile, around);
    const auto* text = std::get_if<std::string>(&step.answer);
    if (!text || step.memory.pending.isOpen()) {
        step.memory.words = core;
        AsideRules::put(memory, core, step.memory);
        return step;
    }
    const std::string said = step.isNotUnderstood && !OutOfReach::of(core) ? "I don't know that." : *text;
    step.answer = said + " " + memory.pending.question;
    step.memory.pending = memory.pending;
    return step;
}

using Verdict = AnswerWords::Verdict;

/// What is said of an action on the screen has to be a yes without any doubt, in the plainest words.
Verdict verdictOf(std::string_view words, const std::string& core, const RequestMemory& memory)
{
    const PendingQuestion& asked = memory.pending;
    if (!asked.isOpen())
        return Verdict::none;
    if (!QuestionKind::isYesOrNo(asked))
        return AnswerWords::declines(core) ? Verdict::no : Verdict::none;
    if (SpokenConsent::agreesTo(asked.question, words) || OfferRules::isAccepted(core, asked))
        return Verdict::yes;
    constexpr std::string_view ofTheScreen = "confirm_action";
    return asked.tool == ofTheScreen ? Verdict::none : AnswerWords::verdict(core, asked.question);
}

RuleStep answered(std::string_view words, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string opened = RequestText::withoutOpening(words);
    const std::string core = RequestText::withoutClosing(opened);
    const Verdict verdict = verdictOf(words, core, memory);
    if (verdict == Verdict::yes) {
        PendingQuestion asked = std::exchange(memory.pending, {});
        return {ToolRequest{std::move(asked.tool), std::move(asked.arguments)}, std::move(memory)};
    }
    if (verdict == Verdict::no)
        return PlainAnswers::drop(std::move(memory));
    if (auto step = OfferRules::corrected(core, memory, around))
        return *std::move(step);
    if (auto step = silenced(core, memory, around))
        return *std::move(step);
    if (auto step = UndoRules::answer(core, memory, around))
        return *std::move(step);
    if (auto step = PlainAnswers::answer(core, opened, memory, around))
        return *std::move(step);
    const RequestMemory before = memory;
    if (const auto request = RequestReader::readSaid(words, around))
        return request->answer(std::move(memory), around);
    if (memory.pending.isOpen()) {
        if (asksInTurn(core, memory.pending))
            return answerInTurn(words, core, memory, around);
        if (auto step = goneOn(std::string(words), memory, around))
            return *std::move(step);
        if (auto step = FollowUpRules::answer(core, memory, around))
            return *std::move(step);
    }
    RuleStep step = answerNew(words, core, memory, around);
    if (!step.isNotUnderstood)
        step.memory.words = core;
    AsideRules::put(before, core, step.memory);
    return AsideRules::takenUp(std::move(step), AsideRules::Behind::words);
}

/// "Remove eggs" may be said of what stands neither in the calendar nor among the reminders.
RuleStep lookedFurther(RuleStep step, const RuleSurroundings& around)
{
    const auto* said = step.isNotFound ? std::get_if<std::string>(&step.answer) : nullptr;
    for (const Skill* skill : SkillTable::all()) {
        auto further = said && skill->lookFurther ? skill->lookFurther(*said, step.memory, around) : std::nullopt;
        if (further)
            return *std::move(further);
    }
    return step;
}

/// What belongs behind what was done, unless it was not done.
RuleStep remarked(RuleStep step, const ToolResult& result)
{
    auto* said = std::get_if<std::string>(&step.answer);
    if (!said)
        return step;
    const std::string remark = std::exchange(step.memory.remark, {});
    if (!ToolResults::failure(result) && !step.memory.pending.isOpen())
        *said += remark;
    return step;
}

/// With what was spoken of in place of the words that point at it.
std::string pointedOut(std::string_view said, RequestMemory& memory, const RuleSurroundings& around)
{
    PointingWords pointing = PointingWords::resolved(said, memory, around);
    if (pointing.isOfEvent)
        memory.talkOf(AgendaCalls::skill);
    std::string another = memory.pending.isOpen() ? "" : TalkedOfRules::another(pointing.words, memory, around);
    return another.empty() ? std::move(pointing.words) : another;
}

/// What was said is taken for what is put right by it, where it puts something right.
RuleStep answeredOrRepaired(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    RepairRules repair = RepairRules::of(core, memory, around);
    if (repair.step)
        return *std::move(repair.step);
    if (!repair.words.empty())
        return answered(repair.words, std::move(repair.memory), around);
    return answered(words, memory, around);
}

RuleStep answerAll(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);

/// What was wished for in the same breath follows, once the first is settled. A question about the first comes before
/// it.
RuleStep withFurther(RuleStep step, const RuleSurroundings& around)
{
    const auto* text = std::get_if<std::string>(&step.answer);
    if (!text || step.memory.pending.isOpen() || step.memory.further.words.empty())
        return step;
    const std::string words = std::exchange(step.memory.further.words, {});
    const std::string said = *text;
    RuleStep further = answerAll(words, step.memory, around);
    if (further.isNotUnderstood)
        return {said + " But I did not understand \"" + words + "\".", std::move(step.memory)};
    std::string& before = further.memory.further.said;
    before = before.empty() ? said : said + " " + before;
    return further;
}

RuleStep answerAll(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto cut = memory.pending.isOpen() ? std::nullopt : WishCut::of(words);
    if (cut) {
        RequestMemory first = memory;
        first.further.words = cut->rest;
        RuleStep step = answeredOrRepaired(cut->first, first, around);
        if (!step.isNotUnderstood)
            return withFurther(std::move(step), around);
    }
    return answeredOrRepaired(words, memory, around);
}

} // namespace

RuleStep RequestRules::answerWords(std::string_view said, const RequestMemory& memory, const RuleSurroundings& around)
{
    RequestMemory now = memory;
    ++now.turn;
    now.remark.clear();
    now.eventsToCome.clear();
    // Where free words are asked for, they stay as they are.
    const bool asksForWords = memory.pending.isOpen() && memory.pending.task.empty();
    const std::string fluent = RequestText::withoutFillers(said);
    const std::string words = asksForWords ? fluent : pointedOut(PlainWording::of(ForMe::removed(fluent)), now, around);
    if (!memory.pending.isOpen())
        now.further = {};
    RuleStep step = remembered(answerAll(words, now, around));
    if (std::holds_alternative<std::string>(step.answer) && !step.memory.pending.isOpen())
        step.memory.further = {};
    if (step.isNotUnderstood && moodOf(words) == RequestMood::wish)
        step.memory.failedAt = step.memory.turn;
    // Only what was asked about goes, and nothing once something else was said.
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    const bool isAgreed = call && memory.pending.isOpen() && call->arguments == memory.pending.arguments;
    if (!isAgreed && step.memory.pending.arguments != memory.pending.arguments)
        step.memory.batch = {};
    const bool isTakenBack = call && ActBook::isTakingBack(*call, step.memory);
    if (!isTakenBack && !ActBook::isTakingBack({step.memory.pending.tool, step.memory.pending.arguments}, step.memory))
        step.memory.takingBack = {};
    return step;
}

RuleStep RequestRules::answerResult(
    const ToolRequest& call, std::string_view text, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto result = ToolResult::parse(text);
    if (ActBook::isTakingBack(call, memory)) {
        RuleStep step = ActBook::takeResult(result.value_or(ToolResult::failed("")), memory, around);
        const std::string words = std::exchange(step.memory.takingBack.words, {});
        if (words.empty() || !step.memory.takingBack.left.empty())
            return remembered(AsideRules::takenUp(std::move(step), AsideRules::Behind::result));
        return remembered(answered(words, step.memory, around));
    }
    if (!result)
        return remembered(withFurther(ToolResults::say("That did not work.", memory), around));
    const Skill* skill = SkillTable::ofCall(call);
    if (!skill || !skill->takeResult)
        return ToolResults::say(ToolResults::failure(*result).value_or("Done."), memory);
    RuleStep step = remarked(lookedFurther(skill->takeResult(call, *result, memory, around), around), *result);
    ResultMarks::askedDay(call, memory, step);
    ActBook::record(
        call, *result, skill->name, skill->whatWasDone ? skill->whatWasDone(call, *result) : "", memory, step);
    ResultMarks::failure(*result, memory, step);
    return remembered(withFurther(AsideRules::takenUp(std::move(step), AsideRules::Behind::result), around));
}

} // namespace quorvell
