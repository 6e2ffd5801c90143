// SPDX-License-Identifier: MIT
#include "Understanding/requests/OfferRules.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/requests/AnswerWords.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/RequestMood.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeWords.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <utility>

namespace quorvell {

std::optional<RuleStep> OfferRules::answer(
    const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 120; ///< Bytes; longer words tell a story.
    static const Pattern past(
        "\\b(?:was|were|went|had|did|yesterday|ago|last|if|no|never|not|cannot|\\w+n['’]t|came|said|told|took"
        "|saw|met|made|gave|\\w{3,}ed)\\b",
        Pattern::caseless);
    // What somebody likes, or says to part, is no matter of a day.
    static const Pattern opinion(
        "^(?:i|we|he|she|they) (?:really |just )?(?:love|like|hate|enjoy|prefer|think|feel|know)\\b"
        "|^(?:see|talk|speak|catch)\\b.* you\\b|\\b(?:mornings|evenings|nights|\\w+days)\\b",
        Pattern::caseless);
    static const Pattern birthday("^(?:(?:my|our|his|her) )?(?:[\\p{L}-]+ ){0,2}?([\\p{L}-]+) has (?:his|her|a|their) "
                                  "(birthday|anniversary|name day) (?:on |is )?(.+)$",
        Pattern::caseless);
    std::string title;
    const bool names = core.size() <= longest && !AnswerWords::isNoText(core) && core.find(' ') != core.npos
        && !past.find(core) && !opinion.find(core) && around.offers("add_event")
        && SpokenDays::find(core, around, title);
    if (!names)
        return std::nullopt;
    const auto feast = birthday.find(core);
    const std::string wish = feast
        ? "put " + feast->texts[0] + "'s " + feast->texts[1] + " into my calendar on " + feast->texts[2]
        : "put " + core + " into my calendar";
    const auto request = RequestReader::read(wish, around);
    if (!request)
        return std::nullopt;
    RuleStep step = CarefulStep::take(request->answer(memory, around), *request, RequestMood::musing, memory);
    return step.memory.pending.isOpen() && step.memory.pending.tool == "add_event" ? std::optional(std::move(step))
                                                                                   : std::nullopt;
}

namespace {

constexpr std::string_view offered = "add_event";

/// How long it takes, in minutes; 0 where the words say something else.
int lengthIn(const std::string& words)
{
    static const Pattern form(
        "^(?:it |that )?(?:takes|lasts|will take|will last|is|goes on for|for|lasting) (?:about )?"
        "(.+?)(?: long| altogether)?$",
        Pattern::caseless);
    const auto match = form.find(words);
    const auto length = match ? SpokenLength::read(match->texts[0]) : std::nullopt;
    return length && length->rest.empty() ? length->minutes : 0;
}

/// The start moves and the length stays.
bool moveStart(Json& event, const DateParts& start, const std::string& words, const RuleSurroundings& around)
{
    static const Pattern lead("^(?:(?:it|that|this|is|was|will be|should be|make it|move (?:it|that) to|put "
                              "(?:it|that) on|on|its|it['’]s|rather|better) )+",
        Pattern::caseless);
    std::string time = lead.replaceAll(words, "");
    if (time.find_first_of("0123456789") == 0)
        time = "at " + time;
    if (!TimeWords::isTime(time, around) && !SpokenDays::read(time, around))
        return false;
    const SpokenMove to = SpokenMove::read(time, start, SpokenMove::FarHour::isUsual, around);
    if (to.choices.size() != 1)
        return false;
    const DateParts& moved = to.choices.front();
    const auto end = DateParts::parse(readString(event, "end").value_or(""));
    const auto minutesTo = [&](const DateParts& until) {
        const auto first = start.instant(around.calendar);
        const auto last = until.instant(around.calendar);
        return first && last ? std::chrono::duration_cast<std::chrono::minutes>(*last - *first).count() : 0;
    };
    if (end && start.allDay == moved.allDay)
        event["end"] = moved.adding(minutesTo(*end)).text();
    else
        event.erase("end");
    event["start"] = moved.text();
    if (!moved.allDay)
        event.erase("all_day");
    return true;
}

std::string worded(const Json& event, const DateParts& start)
{
    const int minutes = static_cast<int>(readInteger(event, "minutes").value_or(0));
    return "Should I put " + readString(event, "title").value_or("that") + " into your calendar, "
        + SpokenWhen::on(SpokenWhen::date(start))
        + (minutes > 0 && !start.allDay ? ", until " + SpokenWhen::clock(start.adding(minutes)) : "") + "?";
}

} // namespace

std::optional<RuleStep> OfferRules::corrected(
    const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const PendingQuestion& asked = memory.pending;
    auto event = asked.tool == offered && QuestionKind::isYesOrNo(asked) ? parseJson(asked.arguments) : std::nullopt;
    const auto start = event ? DateParts::parse(readString(*event, "start").value_or("")) : std::nullopt;
    if (!start || memberOf(*event, "repeat"))
        return std::nullopt;
    static const Pattern lead(
        "^(?:(?:no+|oh|wait|sorry|actually|and|but|hm+|well|ok|okay|i mean|i meant)[,.]* )+", Pattern::caseless);
    static const Pattern agrees(
        "^(?:(?:ok|okay|oh|well)[,]? )*(?:yes|yeah|yep|sure)[,]? (?:please[,]? )?(?:but )?", Pattern::caseless);
    const bool isAgreed = agrees.find(core).has_value();
    const std::string words = lead.replaceAll(agrees.replaceAll(core, ""), "");
    if (const int minutes = start->allDay ? 0 : lengthIn(words); minutes > 0) {
        event->erase("end");
        (*event)["minutes"] = minutes;
    } else if (!moveStart(*event, *start, words, around)) {
        return std::nullopt;
    }
    const auto now = DateParts::parse(readString(*event, "start").value_or("")).value_or(*start);
    RequestMemory next = memory;
    next.pending.arguments = dumpJson(*event);
    next.pending.question = worded(*event, now);
    next.pending.misses = 0;
    if (isAgreed)
        return RuleStep{ToolRequest{asked.tool, std::exchange(next.pending, {}).arguments}, std::move(next)};
    const std::string question = next.pending.question;
    return RuleStep{question, std::move(next)};
}

bool OfferRules::isAccepted(const std::string& core, const PendingQuestion& asked)
{
    static const Pattern wish("^(?:yes|yeah|yep|sure|ok|okay)?[,.]? ?(?:please )?(?:do )?(?:put|add|write|enter|save) "
                              "(?:it|that|this)(?: (?:down|in there|in|there))?"
                              "(?: (?:(?:in|into|to|on) )?(?:my|the|our) (?:calendar|diary|agenda))?$",
        Pattern::caseless);
    return asked.tool == "add_event" && wish.find(core);
}

} // namespace quorvell
