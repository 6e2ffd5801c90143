// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmSkill.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmFollowUp.h"
#include "Understanding/skills/alarms/AlarmQuestions.h"
#include "Understanding/skills/alarms/AlarmReply.h"
#include "Understanding/skills/alarms/AlarmResults.h"
#include "Understanding/skills/alarms/AlarmSeries.h"
#include "Understanding/skills/alarms/AlarmSeriesSteps.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/AlarmWishReader.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Kind = AlarmWish::Kind;
using Purpose = AlarmTalk::Purpose;

constexpr std::string_view tools[] = {AlarmCalls::tool};
constexpr std::chrono::minutes usualSnooze{10};

/// The list is asked for, and what is to be done with it kept in mind.
RuleStep withList(const AlarmWish& wish, Purpose purpose, RequestMemory memory, const RuleSurroundings& around)
{
    memory.alarms = {
        .purpose = purpose, .which = wish.which, .when = wish.when, .length = wish.length, .isTimer = wish.isOfTimers};
    const bool isOfBoth = purpose == Purpose::before;
    const auto call = AlarmCalls{around}.list(isOfBoth ? "all" : AlarmCalls::kindOf(wish.isOfTimers));
    return {call, std::move(memory)};
}

/// "At 5:45 that day", with the day of what was spoken of; nothing where none was.
std::optional<std::string> withThatDay(const std::string& text, const RequestMemory& memory)
{
    static const Pattern that(
        "\\b(?:on |for )?(?:that|the same|that same) (day|morning|evening|night)\\b", Pattern::caseless);
    const auto match = that.find(text);
    if (!match)
        return text;
    const bool isOfAlarms = memory.topic == AlarmCalls::skill && memory.alarms.start;
    const auto start = isOfAlarms ? memory.alarms.start
        : memory.event.start      ? memory.event.start
                                  : memory.reminder.start;
    if (!start)
        return std::nullopt;
    const std::string part = match->texts[0] == "day" ? "" : " in the " + match->texts[0];
    return trimmed(
        text.substr(0, match->range.start) + part + " on " + start->wholeDay().text() + text.substr(match->range.end));
}

RuleStep setOne(const AlarmWish& said, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    AlarmWish wish = said;
    const auto text = withThatDay(wish.text, memory);
    if (!text)
        return RuleStep::asking({.kind = &AlarmQuestions::when,
                                    .question = "On which day, and at what time, should the alarm ring?",
                                    .task = wish.name},
            std::move(memory));
    wish.text = *text;
    static const Pattern ends(
        "\\b(?:every|each|daily|weekdays|weekends)\\b.*?( (?:until|till|through|up to|for (?:the next )?"
        "(?:\\d+|two|three|four|five|six|a few|the next) (?:day|week|month|year)s?)\\b.*)$",
        Pattern::caseless);
    if (const auto end = wish.isOfTimers ? std::nullopt : ends.find(wish.text)) {
        const auto call = calls.setAlarm(wish.text.substr(0, end->groups[0]->start), wish.name);
        const auto* request = std::get_if<ToolRequest>(&call);
        return request
            ? RuleStep::asking({.kind = &ToolResults::confirmation,
                                   .question = "An alarm that repeats rings until you cancel it: I can't give "
                                               "it an end. Should I set it without one?",
                                   .tool = request->name,
                                   .arguments = request->arguments},
                std::move(memory))
            : RuleStep{call, std::move(memory)};
    }
    memory.alarms = {.isTimer = wish.isOfTimers, .isWaking = wish.isWaking, .wantsSound = wish.wantsSound};
    if (!wish.isOfTimers)
        return {calls.setAlarm(wish.text, wish.name), std::move(memory)};
    if (wish.length.count() > 0)
        return {calls.setTimer(wish.length, wish.name), std::move(memory)};
    return RuleStep::asking(
        {.kind = &AlarmQuestions::length, .question = "For how long?", .task = wish.name}, std::move(memory));
}

/// The first one now, each of the others behind the result of the one before it.
RuleStep setSeveral(const AlarmWish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    if (wish.isOfTimers)
        return RuleStep::asking({.kind = &AlarmQuestions::length,
                                    .question = "I set one timer at a time. How long should the first one be?"},
            std::move(memory));
    const auto times = AlarmSeries::times(wish.text, wish.count, around);
    if (!times.empty())
        return AlarmSeriesSteps::begin(times, wish.name, wish.isWaking, std::move(memory), around);
    return RuleStep::asking(
        {.kind = &AlarmQuestions::when,
            .question = wish.count > 2 ? "For what times should I set the " + std::to_string(wish.count) + " alarms?"
                                       : "For what times should I set the alarms?",
            .task = wish.name,
            .arguments = dumpJson(Json{{"text", wish.text}})},
        std::move(memory));
}

RuleStep askHowOften(const AlarmWish& wish, RequestMemory memory)
{
    return RuleStep::asking({.kind = &AlarmQuestions::howOften,
                                .question = "On which days should it ring: every day, on weekdays, or on some days of "
                                            "the week?",
                                .task = wish.name,
                                .tool = AlarmCalls::tool,
                                .arguments = dumpJson(Json{{"text", wish.text}})},
        std::move(memory));
}

RuleStep otherHalf(const AlarmWish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern morning("morning|\\bam\\b|a\\.m", Pattern::caseless);
    const AlarmTalk& talk = memory.alarms;
    const auto other = talk.other ? talk.other : AlarmFollowUp::inOtherHalf(talk, around);
    if (memory.topic != AlarmCalls::skill || talk.id.empty() || !other)
        return {"I do not know what that is for. Please say it in one sentence.", std::move(memory), true};
    const bool isOther = morning.find(wish.which).has_value() == (other->hour < 12);
    if (!isOther)
        return {"It is set so already.", std::move(memory)};
    const auto call = AlarmCalls{around}.moveThis(talk.id, other->text());
    return {call, std::move(memory)};
}

RuleStep carryOut(const AlarmWish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    switch (wish.kind) {
    case Kind::set:
        return setOne(wish, std::move(memory), around);
    case Kind::list:
        return withList(wish, Purpose::tell, std::move(memory), around);
    case Kind::left: // "How long left?" of an alarm that was just set.
        if (wish.which.empty() && memory.topic == AlarmCalls::skill && !memory.alarms.id.empty()
            && !memory.alarms.isTimer)
            return withList({.kind = Kind::left}, Purpose::tellLeft, std::move(memory), around);
        return withList(wish, Purpose::tellLeft, std::move(memory), around);
    case Kind::ends:
        return withList(wish, Purpose::tellEnd, std::move(memory), around);
    case Kind::cancelAll:
        return withList(wish, Purpose::cancelAll, std::move(memory), around);
    case Kind::cancel:
        if (wish.which.empty())
            return {calls.cancel(AlarmCalls::kindOf(wish.isOfTimers)), std::move(memory)};
        return withList(wish, Purpose::cancel, std::move(memory), around);
    case Kind::stop:
        return {calls.stop(), std::move(memory)};
    case Kind::snooze: {
        const auto length =
            wish.length.count() > 0 ? std::chrono::ceil<std::chrono::minutes>(wish.length) : usualSnooze;
        return {calls.snooze(length), std::move(memory)};
    }
    case Kind::pause:
        return {calls.withTimer("pause", wish.which), std::move(memory)};
    case Kind::resume:
        return {calls.withTimer("resume", wish.which), std::move(memory)};
    case Kind::add:
        return {calls.add(wish.length, wish.which, wish.isOfAny), std::move(memory)};
    case Kind::move:
        return withList(wish, Purpose::move, std::move(memory), around);
    case Kind::runAnew:
        return withList(wish, Purpose::runAnew, std::move(memory), around);
    case Kind::rename:
        return withList(wish, Purpose::rename, std::move(memory), around);
    case Kind::repeat:
        return withList(wish, Purpose::repeat, std::move(memory), around);
    case Kind::before:
        return withList(wish, Purpose::before, std::move(memory), around);
    case Kind::turnOn:
        return withList(wish, Purpose::turnOn, std::move(memory), around);
    case Kind::several:
        return setSeveral(wish, std::move(memory), around);
    case Kind::howOften:
        return askHowOften(wish, std::move(memory));
    case Kind::sound:
        return {"Alarms and timers have one tone of their own, which grows louder over a minute. I can't change it. To "
                "hear it, say \"set a timer for one second\".",
            std::move(memory)};
    case Kind::otherHalf:
        break;
    }
    return otherHalf(wish, std::move(memory), around);
}

Request requestOf(AlarmWish wish)
{
    Request request;
    const bool isCancel = wish.kind == Kind::cancel || wish.kind == Kind::cancelAll;
    const bool changesOne = isCancel || wish.kind == Kind::move || wish.kind == Kind::runAnew
        || wish.kind == Kind::rename || wish.kind == Kind::repeat || wish.kind == Kind::turnOn;
    // What changes one that is there is looked up first: that it leads to a change has to be seen from outside.
    const Wish change{.kind = isCancel ? Wish::Kind::cancel : Wish::Kind::move, .title = "alarm", .when = wish.when};
    if (changesOne)
        request.wish = change;
    request.answer = [wish = std::move(wish), changesOne, change](
                         RequestMemory memory, const RuleSurroundings& around) {
        if (changesOne)
            memory.wish = change;
        return carryOut(wish, std::move(memory), around);
    };
    return request;
}

std::optional<Request> readPlain(const std::string& core, const RuleSurroundings& around)
{
    auto wish = AlarmWishReader::read(core);
    // What it is to ring before may well be an event: the calendar is asked first.
    if (wish && wish->kind == Kind::before && !AlarmTraits::namesAlarm(wish->which) && around.offers("whats_on"))
        return std::nullopt;
    return wish ? std::optional(requestOf(*std::move(wish))) : std::nullopt;
}

/// "Tell me when it's 8", which has the opening of a question for others.
std::optional<Request> readSaid(const std::string& words, const RuleSurroundings& around)
{
    static const Pattern watched(
        "^(?:please )?(?:tell|alert|notify|let|warn|inform) me(?: know)? (?:when|at)\\b", Pattern::caseless);
    static const Pattern inPlace("^\\S+(?: ?[ap]m)? (?:instead of|rather than) \\S+(?: ?[ap]m)?$", Pattern::caseless);
    const std::string core = RequestText::withoutClosing(words);
    if (!watched.find(words) && !inPlace.find(core))
        return std::nullopt;
    auto wish = AlarmWishReader::read(core);
    if (wish && wish->kind == Kind::move && inPlace.find(core)) // "9 instead of 6:30".
        return requestOf(*std::move(wish));
    return wish && wish->kind == Kind::set && !wish->isOfTimers && TimeWords::isTime(wish->text, around)
        ? std::optional(requestOf(*std::move(wish)))
        : std::nullopt;
}

/// "Cancel my 6:30", where no event is at that hour.
Skill::Step lookFurther(const std::string& said, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern clock(
        "^(?:cancel|delete|remove|drop|kill|erase|turn off|switch off|disable|skip|stop|scrap|get rid of|forget) "
        "(?:the|my|that) ((?:\\d{1,2}(?:[:.]?\\d{2})?(?: ?[ap]\\.?m\\.?)?|six|seven|eight|nine|ten|half \\w+)"
        "(?: ?o['’]?clock)?)(?: one)?((?: on)?(?: tomorrow| today| (?:mon|tues|wednes|thurs|fri|satur|sun)day))?$",
        Pattern::caseless);
    const auto match = clock.find(trimmed(memory.words, " .!?"));
    if (!match || !around.offers(AlarmCalls::tool))
        return std::nullopt;
    RuleStep step = withList({.which = match->texts[0] + match->texts[1]}, Purpose::cancel, memory, around);
    step.memory.alarms.otherwise = said;
    return step;
}

std::string questionBefore(const ToolRequest& call)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    if (memberOf(arguments, "list"))
        return "";
    if (memberOf(arguments, "alarm"))
        return "Should I set an alarm for that?";
    if (memberOf(arguments, "timer_seconds"))
        return "Should I set a timer?";
    if (memberOf(arguments, "cancel"))
        return "Should I cancel that?";
    return "Should I change that?";
}

/// "Cancel that."
Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.alarms.id.empty())
        return std::nullopt;
    const auto call = AlarmCalls{around}.cancelThis(memory.alarms.id, memory.alarms.isTimer);
    return RuleStep{call, std::move(memory)};
}

/// "And another one at 7:30."
Skill::Step addAnother(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    const auto wish = AlarmFollowUp::another(words, memory);
    return wish && wish->kind == Kind::set ? Skill::Step(setOne(*wish, std::move(memory), around)) : std::nullopt;
}

/// "Delete the 6 am one", "call it gym".
Skill::Step goOn(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (auto step = AlarmFollowUp::ofIt(words, memory, around))
        return step;
    auto wish = AlarmFollowUp::read(words, memory, around);
    if (!wish)
        return std::nullopt;
    const Request request = requestOf(*std::move(wish));
    return request.answer(memory, around);
}

/// What was told to be over may well ring.
Skill::Step stop(RequestMemory memory, const RuleSurroundings& around)
{
    if (!memory.alarms.rings)
        return std::nullopt;
    const auto call = AlarmCalls{around}.stop();
    return RuleStep{call, std::move(memory)};
}

/// "No, 8", "friday".
Skill::Step retime(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.alarms.id.empty() || memory.alarms.isTimer || wish.when.empty())
        return std::nullopt;
    if (const auto half = AlarmWishReader::read(wish.when);
        half && half->kind == Kind::otherHalf && (memory.alarms.other || memory.alarms.start))
        return otherHalf(*half, std::move(memory), around);
    return AlarmFollowUp::moveIt(wish.when, std::move(memory), around);
}

RuleStep changeListed(const Wish& wish, const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    const auto call =
        wish.kind == Wish::Kind::move ? calls.moveThis(thing.id, wish.when) : calls.cancelThis(thing.id, false);
    return {call, std::move(memory)};
}

RuleStep pointAt(const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around)
{
    memory.alarms = {.id = thing.id, .title = thing.title};
    memory.talkOf(AlarmCalls::skill);
    return {withUpperCaseFirst(AlarmItem{.thing = thing}.named(around)) + ".", std::move(memory)};
}

} // namespace

constinit const Skill AlarmSkill::row{
    .name = AlarmCalls::skill,
    .tools = tools,
    .owns = AlarmCalls::owns,
    .readSaid = readSaid,
    .readPlain = readPlain,
    .questionBefore = questionBefore,
    .takeResult = AlarmResults::take,
    .lookFurther = lookFurther,
    .whatWasDone = AlarmReply::whatWasDone,
    .goOn = goOn,
    .stop = stop,
    .undo = undo,
    .addAnother = addAnother,
    .retime = retime,
    .changeListed = changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
