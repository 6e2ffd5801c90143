// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventTalk.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <utility>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;
using Step = std::optional<RuleStep>;

const std::string courtesy = "^(?:(?:and|also|please|so|oh|no|well|can you|could you) )*";

/// One time of a series goes alone, as it was talked about alone.
Wish::Scope scopeOf(const FoundThing& event)
{
    const bool isOneTime = event.repeats && event.id.find('#') != std::string::npos;
    return isOneTime ? Wish::Scope::one : Wish::Scope::open;
}

/// "Make it an hour and a half", "it lasts 20 minutes": how long it is, and not where it goes.
Step lengthSaid(const std::string& plain, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(courtesy
        + "(?:(?:make|let) (?:it|that|this)(?: last| take| go on)?(?: for)?|(?:it|that|this) (?:lasts?|takes?|is|will "
          "(?:be|take|last)|goes on|should (?:be|last|take)|is going to (?:be|take|last))(?: for| only)?|for|lasting)"
          " (?:about )?(.+?)(?: long| altogether| in total)?$");
    static const Pattern elsewhere("\\b(?:later|earlier|sooner|before|after|from|at|on|in|ago|more|longer|shorter)\\b");
    const auto match = form.find(plain);
    const FoundThing& event = memory.event;
    if (!match || elsewhere.find(match->texts[0]) || !event.start || event.start->allDay)
        return std::nullopt;
    const auto length = SpokenLength::read(match->texts[0]);
    if (!length || !trimmed(length->rest).empty() || length->minutes <= 0)
        return std::nullopt;
    RequestMemory after = memory;
    after.wish = {.kind = Wish::Kind::move, .scope = scopeOf(event)};
    const std::string end = event.start->adding(length->minutes).text();
    return RuleStep{AgendaCalls{around}.describe(event.id, "end", end, after.wish.scope), std::move(after)};
}

/// "Make it till 4": when it ends, and not where it goes.
Step endSaid(const std::string& plain, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(courtesy
        + "(?:(?:make|let) (?:it|that|this)(?: (?:last|go|run|go on))?|(?:it|that|this) (?:is|goes|lasts|runs|goes "
          "on|will (?:go|last|run))|"
          "(?:(?:it|that) )?ends?|(?:it|that) finishes|and)?(?: (?:to|at))? ?(?:till|until|at|up to) (.+)$");
    static const Pattern said("\\b(?:till|until|up to|ends?|finishes)\\b");
    const auto match = said.find(plain) ? form.find(plain) : std::nullopt;
    const FoundThing& event = memory.event;
    if (!match || !event.start || event.start->allDay)
        return std::nullopt;
    const SpokenMove to = SpokenMove::read("at " + match->texts[0], *event.start, SpokenMove::FarHour::isUsual, around);
    constexpr int halfDay = 12 * 60;
    if (to.choices.size() != 1 || to.choices.front().allDay)
        return std::nullopt;
    DateParts end = to.choices.front();
    if (!(end > *event.start) && end.adding(halfDay) > *event.start)
        end = end.adding(halfDay);
    if (!(end > *event.start) || end.wholeDay() != event.start->wholeDay())
        return std::nullopt;
    RequestMemory after = memory;
    after.wish = {.kind = Wish::Kind::move, .scope = scopeOf(event)};
    return RuleStep{AgendaCalls{around}.describe(event.id, "end", end.text(), after.wish.scope), std::move(after)};
}

/// "At 11 for 30 minutes", of an event that was put in for the day.
Step hourSaid(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:no|and|yes|ok|okay|well|so|it|that|is|it['’]s|starts|begins|will be|make it|from|at|between|about|"
        "around),? )*(?:\\d|noon|midday|half|quarter|one|two|three|four|five|six|seven|eight|nine|ten|"
        "eleven|twelve|tomorrow|on )",
        Pattern::caseless);
    static const Pattern lead(
        "^(?:(?:no|and|yes|ok|okay|well|so|it|that|is|it['’]s|starts|begins|will be|make it),? )+", Pattern::caseless);
    constexpr int usualMinutes = 60;
    const FoundThing& event = memory.event;
    const bool isOneDay = event.start && event.start->allDay && (!event.end || *event.end == *event.start);
    if (!isOneDay || event.repeats || !form.find(core))
        return std::nullopt;
    const std::string words = lead.replaceAll(core, "");
    const EventWords said = EventWords::read(words.find_first_of("0123456789") == 0 ? "at " + words : words, around);
    const auto moment = SpokenMoment::read(words, around);
    if (!said.title.empty() || !said.start || said.start->allDay || said.isPartOfDay || (moment && moment->namesDay))
        return std::nullopt;
    DateParts start = *event.start;
    start.hour = said.start->hour;
    start.minute = said.start->minute;
    start.allDay = false;
    const int span = said.end ? (said.end->hour - said.start->hour) * 60 + said.end->minute - said.start->minute : 0;
    const int minutes = span > 0 ? span : said.minutes > 0 ? said.minutes : usualMinutes;
    RequestMemory after = memory;
    after.wish = {.kind = Wish::Kind::move, .scope = scopeOf(event)};
    return RuleStep{
        AgendaCalls{around}.move(event.id, start, start.adding(minutes), after.wish.scope), std::move(after)};
}

bool mayBeTime(const std::string& words, const RuleSurroundings& around)
{
    std::string others;
    return CalendarWords::holdsTimeWords(words) || SpokenDays::find(words, around, others)
        || RequestWords(SpokenMoment::wordsBeside(words, around)).size() < RequestWords(words).size()
        || SpokenLength::read(words);
}

/// "It's at the town hall": where it is, as far as the words speak of no time.
Step placed(
    const std::string& plain, const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(courtesy
        + "(?:(?:it|that|this) (?:is|will be|takes place|happens|is held|is going to be) (?:at|in) |(?:the )?(?:place|"
          "location|address|venue) is (?:at |in )?|at (?=(?:the|my|our) ))(.+)$");
    constexpr std::size_t longest = 8; ///< Words of a place.
    const auto match = form.find(plain);
    const std::size_t count = match ? RequestWords(match->texts[0]).size() : 0;
    if (count == 0 || count > longest || mayBeTime(match->texts[0], around))
        return std::nullopt;
    const RequestWords words(core);
    const std::string place = words.size() >= count
        ? trimmed(words.said(words.size() - count, words.size()), " .,;!?\"“”") // As they spelled it.
        : match->texts[0];
    const auto scope = scopeOf(memory.event);
    return RuleStep{AgendaCalls{around}.describe(memory.event.id, "place", place, scope), memory};
}

/// "Change it to 'tax meeting'", "call it brunch": no time, so that it is a name.
Step renamed(
    const std::string& plain, const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(
        courtesy + "(?:change|rename|retitle|call|name|title) (?:it|that)(?: (?:to|as|into))? (.+)$");
    static const Pattern other(
        "^(?:back|off|in|on|up|out|down|now|again|every|each|a reminder|(?:an? )?(?:alarm|task|note))\\b"
        "|\\b(?:earlier|later|sooner|longer|shorter|minutes?|hours?|days?|weekly|daily|monthly)\\b");
    constexpr std::size_t longest = 8; ///< Words of a name.
    const auto match = form.find(plain);
    const std::size_t count = match ? RequestWords(match->texts[0]).size() : 0;
    if (count == 0 || count > longest || other.find(match->texts[0]) || mayBeTime(match->texts[0], around))
        return std::nullopt;
    const RequestWords words(core);
    const std::string title = words.size() >= count
        ? trimmed(words.said(words.size() - count, words.size()), " .,;!?'\"“”‘’") // As they spelled it.
        : match->texts[0];
    const auto scope = scopeOf(memory.event);
    return RuleStep{AgendaCalls{around}.describe(memory.event.id, "title", withUpperCaseFirst(title), scope), memory};
}

/// "Same time?", "which day is that?", "is it on friday?": told as it stands.
Step toldAgain(const std::string& plain, const RequestMemory& memory)
{
    static const Pattern asks(courtesy
        + "(?:(?:at |on |is (?:it|that) (?:at |on )?)?(?:the )?same (?:time|day|hour)(?: as before| still)?"
          "|(?:which|what) (?:day|date|weekday|day of the week) (?:is|was|will) (?:that|this|it be|that be)(?: on)?"
          "|(?:which|what) (?:day|date) (?:is it|was it) on|what time (?:is|was|will) (?:that|this|it be)(?: at)?"
          "|at what time (?:is|was) (?:that|it)|when (?:is|was|does) (?:that|it|this)(?: (?:again|on|start|begin))?"
          "|(?:is|was) (?:it|that) (?:still |really )?(?:on|at|this|next|today|tomorrow)\\b.*)$");
    if (!asks.find(plain))
        return std::nullopt;
    RequestMemory after = memory;
    after.talkOf(AgendaCalls::skill);
    return RuleStep{AgendaReply::named(memory.event) + ".", std::move(after)};
}

/// "Where is it?": more of it than is kept in mind.
Step lookedUp(const std::string& plain, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern where(courtesy
        + "(?:where (?:is|was|does) (?:it|that|this)(?: take place| happen| held)?"
          "|what is (?:the|its) (?:place|address|location|venue))$");
    static const Pattern ends(courtesy
        + "(?:how long (?:is|does|will) (?:it|that|this)(?: last| take| go on| be)?"
          "|(?:when|what time|at what time) (?:does|will) (?:it|that|this) (?:end|finish|stop|be over)"
          "|(?:when|what time) is (?:it|that) over|until when(?: is it)?)$");
    static const Pattern who(
        courtesy + "who (?:is (?:coming|there|it with|that with|going)|comes|will be there|else is coming)$");
    const Aim aim = where.find(plain) ? Aim::where
        : ends.find(plain)            ? Aim::ends
        : who.find(plain)             ? Aim::who
                                      : Aim::none;
    if (aim == Aim::none || !around.offers("whats_on"))
        return std::nullopt;
    return EventLookup::begin({.aim = aim}, memory, around);
}

} // namespace

std::optional<RuleStep> EventTalk::goOn(
    const std::string& words, const RequestMemory& before, const RuleSurroundings& around)
{
    RequestMemory memory = before;
    if (before.asked == RequestMemory::CalendarQuestion::events) { // "It" is the only one that was told.
        const bool isOne = before.found.size() == 1 && before.found.front().skill == AgendaCalls::skill;
        memory.event = isOne ? before.found.front() : FoundThing();
    }
    constexpr std::size_t mostBytes = 200;
    if (!memory.event.start || memory.event.id.empty() || words.size() > mostBytes)
        return std::nullopt;
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    const std::string plain = CalendarWords::of(core).plain;
    if (auto step = toldAgain(plain, memory))
        return step;
    if (auto step = lookedUp(plain, memory, around))
        return step;
    if (!around.offers("change_event"))
        return std::nullopt;
    if (auto step = hourSaid(core, memory, around))
        return step;
    if (auto step = lengthSaid(plain, memory, around))
        return step;
    if (auto step = endSaid(plain, memory, around))
        return step;
    if (auto step = renamed(plain, core, memory, around))
        return step;
    return placed(plain, core, memory, around);
}

} // namespace quorvell
