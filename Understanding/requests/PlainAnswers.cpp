// SPDX-License-Identifier: MIT
#include "Understanding/requests/PlainAnswers.h"

#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/SmallTalk.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/dialogue/talk/ChatReplies.h"
#include "Understanding/dialogue/talk/Jokes.h"
#include "Understanding/dialogue/talk/TalkWords.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/requests/UndoRules.h"

#include <chrono>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

/// What is said while a question is open is followed by the question: it still waits.
RuleStep sayAndAskAgain(const std::string& text, RequestMemory memory)
{
    const std::string question = memory.pending.question;
    return {question.empty() ? text : text + " " + question, std::move(memory)};
}

/// A "no" or "cancel" right behind what was done may well mean that.
Step cancelled(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    // Said of nothing that is asked, it puts a reminder off.
    static const Pattern notNow("^(?:not (?:now|today|this time)|maybe later)[.!]*$", Pattern::caseless);
    const bool isDeclined = memory.pending.isOpen() && notNow.find(core);
    if (!SmallTalk::isCancel(core) && !isDeclined)
        return std::nullopt;
    if (memory.pending.isOpen() || !memory.aside.empty())
        return PlainAnswers::drop(memory);
    static const Pattern denies("^(?:no+|nope|nah|cancel|not that|neither|none)[.!]*$", Pattern::caseless);
    // What was done a moment ago is what nobody minds any more.
    static const Pattern neverMind("^never ?mind[.!]*$", Pattern::caseless);
    if (ActBook::wasJustDone(memory) && neverMind.find(core))
        return ActBook::takeBack({.left = ActBook::newest(memory, 1)}, memory, around);
    if (ActBook::wasJustDone(memory))
        return denies.find(core) ? UndoRules::offer("", memory)
                                 : RuleStep{"Okay. What I did stays. Say \"undo that\" if it should not.", memory};
    static const Pattern no("^(?:no+|nope|nah)(?: no)*[.!]*$", Pattern::caseless);
    return RuleStep{no.find(core) && !memory.lastReply.ends_with('?')
            ? "I have not asked anything just now, so nothing is changed."
            : "Okay.",
        memory};
}

std::string joke(const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto day = std::chrono::floor<std::chrono::days>(around.now).time_since_epoch().count();
    return std::string(Jokes::at(static_cast<std::size_t>(day) + memory.turn));
}

RuleStep startAgain(RequestMemory memory)
{
    if (ActBook::wasJustDone(memory))
        return UndoRules::offer("", std::move(memory));
    return {"All right. What can I do for you?", std::move(memory)};
}

RuleStep putRight(RequestMemory memory)
{
    constexpr std::size_t recently = 3; ///< Utterances.
    const bool isAboutAct = memory.pending.isTakenUpAgain && ActBook::wasJustDone(memory);
    if (memory.pending.isOpen() && !isAboutAct)
        return sayAndAskAgain("I am sorry. Nothing is changed yet.", std::move(memory));
    if (!memory.acts.empty() && memory.acts.back().turn + recently >= memory.turn)
        return UndoRules::offer("I am sorry.", std::move(memory));
    if (memory.acts.empty())
        return {"I am sorry. I have changed nothing. Please say it once more in other words.", std::move(memory)};
    return {"I am sorry. Please say it once more in other words. The last thing that I did: I "
            + ActBook::inWords(ActBook::newest(memory, 1)) + ".",
        std::move(memory)};
}

std::string repeated(const RequestMemory& memory)
{
    return memory.lastReply.empty() ? "I have not said anything yet." : memory.lastReply;
}

/// What was said is a kind of talk; the reply leaves everything as it is.
RuleStep answerTalk(TalkKind kind, RequestMemory memory, const RuleSurroundings& around)
{
    switch (kind) {
    case TalkKind::joke: {
        const std::string words = joke(memory, around);
        return sayAndAskAgain(words, std::move(memory));
    }
    case TalkKind::goodbye:
        memory.pending = {};
        memory.aside.clear();
        return {"Goodbye.", std::move(memory)};
    case TalkKind::howAreYou:
        return sayAndAskAgain("I am fine, thank you.", std::move(memory));
    case TalkKind::whoAreYou:
        return sayAndAskAgain(
            "I am Quorvell, a program that works on this computer alone. " + SkillTable::abilities(around),
            std::move(memory));
    case TalkKind::wrong:
        return putRight(std::move(memory));
    case TalkKind::repeat:
        return {repeated(memory), std::move(memory)};
    case TalkKind::repeatSlowly:
        return {"I cannot speak more slowly here. Once more: " + repeated(memory), std::move(memory)};
    case TalkKind::explain:
        return {memory.lastReply.empty()
                ? "I have not said anything yet that I could explain. " + SkillTable::abilities(around)
                : "I can only say it once more: " + memory.lastReply,
            std::move(memory)};
    case TalkKind::praise:
        return sayAndAskAgain("Thank you.", std::move(memory));
    case TalkKind::indifference:
        return memory.pending.isOpen() ? sayAndAskAgain("I would rather not guess.", std::move(memory))
                                       : RuleStep{"Okay. Nothing is changed.", std::move(memory)};
    case TalkKind::agreement:
        return sayAndAskAgain("Good.", std::move(memory));
    case TalkKind::stop:
        return PlainAnswers::drop(std::move(memory));
    case TalkKind::startAgain:
        return startAgain(std::move(memory));
    case TalkKind::wait:
        return {"Take your time.", std::move(memory)};
    case TalkKind::quit:
        return sayAndAskAgain(
            "Say \"goodbye\" to end our talk, or \"stop\" to silence me. In the terminal Ctrl+D ends the program.",
            std::move(memory));
    }
    return {std::string(), std::move(memory)};
}

/// A short word of agreement behind an open question chooses nothing, and is no task and no note.
Step agreedToNothing(const std::string& core, const RequestMemory& memory, bool isYes)
{
    if (!memory.pending.isOpen() || (!isYes && !SmallTalk::isAgreement(core)))
        return std::nullopt;
    return sayAndAskAgain(std::string(PlainReplies::notUnderstood), memory);
}

} // namespace

RuleStep PlainAnswers::drop(RequestMemory memory)
{
    const bool wasAsking = memory.pending.isOpen() || !memory.aside.empty();
    memory.pending = {};
    memory.aside.clear();
    return {wasAsking ? std::string(PlainReplies::dropped) : "Okay.", std::move(memory)};
}

std::optional<RuleStep> PlainAnswers::answer(
    const std::string& core, const std::string& opened, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto step = cancelled(core, memory, around))
        return step;
    static const Pattern yes("^(?:yes|yeah|yep|yup|sure)\\b", Pattern::caseless);
    const bool isYes = yes.find(core) && SpokenConsent::isAffirmative(core);
    if (auto step = agreedToNothing(core, memory, isYes))
        return step;
    const SkillSummary skills{SkillTable::abilities(around), SkillTable::help(around)};
    // Thanks are closing words, too: nothing but them may be all that was said.
    for (const std::string& said : {core, opened, std::string(isYes ? "yes" : core)}) {
        if (const auto text = SmallTalk::answer(said, memory.lastReply, skills))
            return RuleStep{*text, std::move(memory)};
    }
    // An open question may ask for just these words.
    if (const auto reply = memory.pending.isOpen() ? std::nullopt : ChatReplies::to(core))
        return RuleStep{std::string(*reply), std::move(memory)};
    static const Pattern another(
        "^(?:another|one more|more|tell (?:me )?(?:another|one more)|next|again)(?: (?:one|please|joke))*[.!?]*$",
        Pattern::caseless);
    if (Jokes::isOne(memory.lastReply) && another.find(core))
        return RuleStep{joke(memory, around), std::move(memory)};
    const auto talk = talkOf(opened);
    return talk ? Step(answerTalk(*talk, std::move(memory), around)) : std::nullopt;
}

} // namespace quorvell
