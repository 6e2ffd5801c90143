// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderQuery.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderChange.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostNamed = 3; ///< More of one name nobody keeps apart by ear.

bool asksForNext(const std::string& core)
{
    static const Pattern next("^(?:(?:what|when|which|show me|tell me|read|read me|give me)(?:['’]?s| is| one is)? )?"
                              "(?:my |the )?(?:next|upcoming|first) reminder(?: due| up| please)?$"
                              "|^(?:what|which) reminder (?:is|comes) (?:next|up next|first)$"
                              "|^what (?:will|do|are) you (?:going to )?remind(?:ing)? me (?:of|about) next$",
        Pattern::caseless);
    return next.find(core).has_value();
}

/// "When did you say I have to get the cake?" Empty for anything else: "when do I have to be there" may be an event.
std::string taskAskedFor(const std::string& core)
{
    static const std::string when = "^(?:at )?(?:what time|when) ";
    static const Pattern forms[] = {
        Pattern(when
                + "(?:did (?:you|i|we) say|was it|is it)(?: that)? (?:i|we)(?:['’]ve| have| had| need| needed| must"
                  "| should| was| am| wanted| got)+(?: supposed| meant| going)?(?: to)? (.+)$",
            Pattern::caseless),
        Pattern(when
                + "(?:will|do|are|would|did|am) (?:you|i) (?:(?:going|supposed) to )?(?:remind me|reminding me"
                  "|(?:ask|tell|want) you to remind me|(?:get|be) reminded|reminded) (?:to|about|of) (.+)$",
            Pattern::caseless),
        Pattern(when + "(?:is|was) (?:my|the) reminder (?:to|about|for|of) (.+)$", Pattern::caseless),
        Pattern(when
                + "(?:do (?:i|we) (?:have|need) to|(?:am i|are we) (?:supposed|meant) to) ((?:call|ring|phone|pay|buy|"
                  "pick up|collect|water|feed|bring|send|post|return|renew|text|write|fetch|wash|clean) .+)$",
            Pattern::caseless),
    };
    for (const Pattern& form : forms)
        if (const auto match = form.find(core))
            return match->texts[0];
    static const Pattern named(
        "^(?:do (?:i|we|you) have|have (?:i|we|you) (?:got|set|made)|is there|are there|did (?:i|we|you) "
        "(?:set|make|create|add)|show me|what(?: is|['’]s)|check) (?:an? |any |the |my )?reminders?(?: set)? "
        "(?:to|about|for|of) (?!(?:today|tonight|tomorrow|tmrw|this|next|the (?:next|coming|week|weekend|month|\\d)|"
        "(?:mon|tues|wednes|thurs|fri|satur|sun)day|\\d|me\\b|us\\b|(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)"
        "))"
        "(.+)$",
        Pattern::caseless);
    const auto match = named.find(core);
    return match ? match->texts[0] : std::string();
}

/// Those that are called so; else those of the thing that comes last: "get the cake" is "pick up the cake".
std::vector<FoundThing> speakingOf(const std::vector<FoundThing>& listed, const std::string& title)
{
    const std::string task = ReminderChange::taskNamed(title);
    auto found = Pointing::named(listed, task);
    const RequestWords words(task);
    constexpr std::size_t shortest = 3; // "it" and "up" are in anything.
    if (found.empty() && words.size() > 1 && words.at(words.size() - 1).size() >= shortest)
        found = Pointing::named(listed, words.at(words.size() - 1));
    return found;
}

/// The first that is still to come.
std::vector<FoundThing> nextOf(const std::vector<FoundThing>& listed, const RuleSurroundings& around)
{
    const DateParts now = DateParts::from(around.now, around.calendar);
    std::vector<FoundThing> ahead;
    std::ranges::copy_if(listed, std::back_inserter(ahead),
        [&](const FoundThing& reminder) { return reminder.start && *reminder.start >= now; });
    const auto first = std::ranges::min_element(ahead, {}, [](const FoundThing& reminder) { return *reminder.start; });
    return first == ahead.end() ? std::vector<FoundThing>() : std::vector{*first};
}

std::string wordsOf(const FoundThing& reminder, const RuleSurroundings& around)
{
    return reminder.title
        + (reminder.start ? ", " + SpokenWhen::on(SpokenWhen::dateSeenFrom(*reminder.start, around)) : "") + ".";
}

} // namespace

std::optional<Request> ReminderQuery::read(const std::string& core)
{
    const std::string task = taskAskedFor(core);
    if (task.empty() && !asksForNext(core))
        return std::nullopt;
    return Request{.answer = [task](RequestMemory memory, const RuleSurroundings& around) {
        const auto timed = TimeWords::atEnd(task, around);
        memory.wish = {.kind = Wish::Kind::tellNext, .title = timed && !timed->rest.empty() ? timed->rest : task};
        memory.days.reset();
        return RuleStep{ReminderCalls{around}.list(), std::move(memory)};
    }};
}

RuleStep ReminderQuery::tell(
    const std::vector<FoundThing>& listed, RequestMemory memory, const RuleSurroundings& around)
{
    const Wish wish = std::exchange(memory.wish, {});
    auto found = wish.title.empty() ? nextOf(listed, around) : speakingOf(listed, wish.title);
    found.resize(std::min(found.size(), mostNamed));
    if (found.empty() && wish.title.empty())
        return ToolResults::say(listed.empty() ? "You have no reminders." : "No reminder is still to come.", memory);
    if (found.empty())
        return ToolResults::say("You have no reminder for \"" + wish.title + "\".", std::move(memory));
    std::string reply;
    for (const FoundThing& reminder : found)
        reply += (reply.empty() ? "" : " ") + wordsOf(reminder, around);
    if (found.size() == 1) {
        memory.reminder = found.front();
        memory.talkOf(ReminderCalls::skill);
    }
    memory.found = std::move(found);
    return ToolResults::say(std::move(reply), std::move(memory));
}

} // namespace quorvell
