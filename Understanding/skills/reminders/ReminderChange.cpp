// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderChange.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/reminders/ReminderCues.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/CommonCues.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

using Kind = ReminderChange::Kind;

std::string withoutArticle(const std::string& words)
{
    static const Pattern article(
        "^(?:(?:to|about|for|the|my|our|a|an|that|this|his|her|their|some)\\s+)+", Pattern::caseless);
    return trimmed(article.replaceAll(trimmed(words), ""));
}

/// "my dentist reminder", "the reminder about the dentist": the words of its task. Empty for "the reminder".
std::string withoutKind(const std::string& words)
{
    static const Pattern thing(
        "^(?:(?:that|this|the|my|our) )?(?:(.+) )?reminder(?: (?:to|about|for|of|that says)(?: the| my)? (.+))?$",
        Pattern::caseless);
    static const Pattern one(
        "^(?:(?:that|this|the) )?(?:one|ones) (?:to|about|for|of|with|that says)(?: the| my)? (.+)$",
        Pattern::caseless);
    if (const auto named = one.find(trimmed(words)))
        return withoutArticle(named->texts[0]);
    const auto match = thing.find(trimmed(words));
    return match ? withoutArticle(match->texts[0].empty() ? match->texts[1] : match->texts[0]) : withoutArticle(words);
}

bool isPast(std::string_view verb)
{
    constexpr std::size_t shortestRegular = 4; // "aged"; "fed" and "need" are none.
    constexpr auto irregular = std::to_array<std::string_view>(
        {"rang", "rung", "paid", "bought", "got", "fed", "sent", "took", "taken", "did", "done", "wrote", "written",
            "met", "made", "swept", "went", "gave", "given", "put", "brought", "told", "spoke", "saw", "read", "ran",
            "had", "ate", "drank", "cut", "set", "left", "found", "built", "drove", "swam", "hung", "wound", "dealt"});
    constexpr auto present = std::to_array<std::string_view>({"need", "feed", "speed", "proceed", "indeed", "exceed"});
    if (std::ranges::find(present, verb) != present.end())
        return false;
    return (verb.size() >= shortestRegular && verb.ends_with("ed"))
        || std::ranges::find(irregular, verb) != irregular.end();
}

std::string until(const TimeWords& found)
{
    static const Pattern span(
        "\\b(?:minutes?|hours?|days?|weeks?)$|^(?:an?|half an|the) (?:hour|day|week) and a half$", Pattern::caseless);
    static const Pattern led("^(?:in|at|on|after|next)\\b", Pattern::caseless);
    // Moved by a length it goes on from its own time, else from now.
    if (span.find(found.time) && !led.find(found.time))
        return (found.isBy ? "by " : "in ") + found.time;
    return found.time;
}

} // namespace

std::string ReminderChange::taskNamed(const std::string& content)
{
    static const Pattern edges(
        "^(?:(?:let|as|with|that|this|it|and|on|is|are|i(?: am| have|'m|'ve|’m|’ve)?|already|just|all)"
        "\\s+)+|(?:^|\\s+)(?:is|are|has|have|been|was|were|it|that|this|them|already|now|today"
        "|just now|yesterday|earlier|last night|this (?:morning|afternoon|evening)|by the "
        "way|as|and|all|thing|one(?:['’]s)?|off|too|any more|anymore|can|for|about)$",
        Pattern::caseless);
    static const Pattern gerund("^[a-z]+ing\\s+(?=\\S)", Pattern::caseless);
    std::string task = trimmed(content);
    for (std::string before; before != task && !ListPlace::read(task);) {
        before = task;
        task = trimmed(edges.replaceAll(task, ""), ",.");
    }
    return withoutKind(gerund.replaceAll(task, ""));
}

std::optional<ReminderChange> ReminderChange::listing(const RequestReading& reading, const RuleSurroundings& around)
{
    std::string others;
    const auto days = SpokenDays::find(reading.content, around, others);
    if (!reading.has(ReminderCues::reminders) && !reading.has(ReminderCues::reminder) && !RequestText::isIdle(others))
        return std::nullopt;
    const bool isAll = reading.has(CommonCues::cancel) && reading.has(ReminderCues::reminders);
    if (isAll && !RequestText::isIdle(others)) // "All my reminders about mum".
        return std::nullopt;
    return ReminderChange{.kind = isAll ? Kind::cancelAll : Kind::list, .days = days};
}

std::optional<ReminderChange> ReminderChange::finishing(const RequestReading& reading)
{
    // Long stories are no task.
    static const Pattern isSomethingElse("(?:\\S+\\s+){5}\\S", Pattern::caseless);
    const std::string task = taskNamed(reading.content);
    if (isSomethingElse.find(task) || reading.has(CommonCues::what) || reading.has(CommonCues::when)
        || reading.has(CommonCues::foreign))
        return std::nullopt;
    // The one that was talked about, or that is due.
    static const Pattern newest("^(?:last|latest|newest|most recent|previous|current)$", Pattern::caseless);
    const bool isDone =
        reading.has(ReminderCues::done) || !(reading.has(CommonCues::cancel) || reading.has(ReminderCues::stop));
    return ReminderChange{.kind = isDone ? Kind::done : Kind::cancel, .task = newest.find(task) ? std::string() : task};
}

ReminderChange ReminderChange::ofTime(ReminderChange change, const RuleSurroundings& around)
{
    static const Pattern every("^(?:every|each|every single)$", Pattern::caseless);
    static const Pattern set(
        "^(?:(?:that is|which is|is) )?(?:scheduled |set )?(?:for |at |of |on )?", Pattern::caseless);
    if (every.find(change.task))
        return {.kind = Kind::cancelAll};
    const std::string time = set.replaceAll(change.task, "");
    std::string others;
    auto days = SpokenDays::read(time, around);
    if (!days)
        days = SpokenDays::findMoment(time, around, others);
    if (!days || !others.empty() || time.empty())
        return change;
    return {.kind = Kind::cancelAll, .days = std::move(days)};
}

std::optional<ReminderChange> ReminderChange::told(std::string_view core)
{
    static const Pattern past("^(?:(?:yes|yeah|yep|ok|okay)[,.]? )?(?:i|we)(?:'ve|’ve| have)?(?: been and| gone and| "
                              "already| just| also)* (\\S+)(?: (?:up|out|off|in|for|to))?"
                              " (.+)$",
        Pattern::caseless);
    // People who are only pointed at are no task.
    static const Pattern someone("^(?:you|it|him|her|them|us|that|this|there|here)\\b", Pattern::caseless);
    static const Pattern passive("^(.+?)(?:['’]s|['’]ve| has| have) been (\\S+)$", Pattern::caseless);
    if (const auto match = passive.find(core); match && isPast(lowerCased(match->texts[1])))
        return finishing({.content = match->texts[0]});
    const auto match = past.find(core);
    if (!match || !isPast(lowerCased(match->texts[0])) || someone.find(match->texts[1]))
        return std::nullopt;
    return finishing({.content = match->texts[1]});
}

std::optional<ReminderChange> ReminderChange::puttingOff(const RequestReading& reading, const RuleSurroundings& around)
{
    const auto found = TimeWords::atEnd(reading.content, around);
    if (!found) {
        const bool isVague = reading.has(ReminderCues::later) && RequestText::isIdle(reading.content);
        const bool isNamed = reading.has(ReminderCues::reminder) && !reading.content.empty();
        return isVague || isNamed
            ? std::optional(ReminderChange{.kind = Kind::later, .task = taskNamed(reading.content), .when = "later"})
            : std::nullopt;
    }
    const std::string task = taskNamed(found->rest);
    // "Later he called me tomorrow" is no wish.
    static const Pattern story("^(?:he|she|they|we|you|who)\\b", Pattern::caseless);
    if (story.find(task))
        return std::nullopt;
    return ReminderChange{.kind = Kind::later, .task = task, .when = until(*found)};
}

} // namespace quorvell
