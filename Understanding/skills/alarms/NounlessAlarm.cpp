// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/NounlessAlarm.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/NounlessWaking.h"
#include "Understanding/skills/alarms/TimerLength.h"

#include <utility>

namespace quorvell {

namespace {

using NounlessWish = std::optional<AlarmWish>;
using Kind = AlarmWish::Kind;

NounlessWish snoozing(const std::string& core)
{
    static const Pattern snooze("^(?:(?:hit |press )?snooze(?: the alarm| my alarm)?|(?:let me )?sleep (?:in "
                                ")?(?:(?:a|some) (?:bit|little|while|more) ?)?(?:longer)?)"
                                "(?: (?:for|by)?\\s*(.+))?$",
        Pattern::caseless);
    if (const auto match = snooze.find(core)) {
        const auto length = TimerLength::read(match->texts[0]);
        static const Pattern idle(
            "^(?:a (?:bit|little|while|moment)|please|again|longer|more|now|)$", Pattern::caseless);
        if (length && length->rest.empty())
            return AlarmWish{.kind = Kind::snooze, .isOfAny = true, .length = length->length};
        if (const auto minutes = TimerLength::read(match->texts[0] + " minutes"); minutes && minutes->rest.empty())
            return AlarmWish{.kind = Kind::snooze, .isOfAny = true, .length = minutes->length};
        return idle.find(match->texts[0]) ? NounlessWish(AlarmWish{.kind = Kind::snooze, .isOfAny = true})
                                          : std::nullopt;
    }
    return std::nullopt;
}

/// What rings is stopped; what runs is held.
NounlessWish halting(const std::string& core)
{
    static const Pattern stop(
        "^(?:stop|quit) (?:ringing|beeping|buzzing|that noise|the (?:noise|ringing|beeping|sound))$"
        "|^(?:i am|i['’]m) (?:awake|up)(?: now| already)?$|^shut (?:it )?off$|^make it stop$"
        "|^(?:turn|switch|shut) (?:it|that)(?: thing)? off$|^silence(?: it| that)?$",
        Pattern::caseless);
    if (stop.find(core))
        return AlarmWish{.kind = Kind::stop, .isOfAny = true};
    static const Pattern held(
        "^(?:(pause|hold|freeze)|resume|unpause|continue)(?: (?:it|that|the count))$|^(?:resume|unpause)$",
        Pattern::caseless);
    if (const auto match = held.find(core))
        return AlarmWish{.kind = match->texts[0].empty() ? Kind::resume : Kind::pause, .isOfTimers = true};
    return std::nullopt;
}

/// Words for what a timer is of, as in "the eggs"; nothing for what a calendar or a list of tasks is asked about.
std::optional<std::string> timedThing(const std::string& words)
{
    static const Pattern pointing("^(?:it|that|this|they|those|these)$", Pattern::caseless);
    static const Pattern others(
        "\\b(?:meetings?|calls?|appointments?|events?|class|classes|lessons?|party|school|movie|film|show|match|game|"
        "work"
        "|shift|conference|flight|trip|train|bus|exam|vacation|holidays?|report|invoice|project|tasks?|homework|order"
        "|delivery|parcel|i|you|we|he|she|everything|all|christmas|easter|weekend|day|week|month|year)\\b|\\d",
        Pattern::caseless);
    static const Pattern longer("\\S+(?:\\s+\\S+){3}");
    const std::string thing = AlarmLine::withoutArticles(trimmed(words));
    if (pointing.find(trimmed(words)))
        return "";
    return thing.empty() || others.find(thing) || longer.find(thing) ? std::nullopt : std::optional(thing);
}

/// "How long does the oven still need", "how long is left on the pasta", "how long until the eggs are done".
NounlessWish leftOfThing(const std::string& core)
{
    static const Pattern forms[] = {
        Pattern("^how (?:much )?(?:long|longer|time|many minutes) (?:does|do|will|must|should) (.+?) (?:still |yet "
                ")?(?:need|have|take"
                "|go|run|be)(?: to (?:go|run|cook|bake))?(?: (still|yet|left|to go|more|longer))?$",
            Pattern::caseless),
        Pattern("^how (?:much )?(?:long|longer|time|many minutes)(?: is| are)?(?: there)?(?: still)?"
                "(?: (?:do|have) (?:i|we)(?: have| got)?)? (?:left|remaining|to go) (?:on|for|of|with|in) (.+)$",
            Pattern::caseless),
        Pattern("^how (?:much longer|many more minutes)(?: is it| do (?:i|we) have)? (?:for|on|with) (.+)$",
            Pattern::caseless),
        Pattern("^how (?:much )?(?:long|longer|time|many minutes)(?: is it| do (?:i|we) have)? "
                "(?:until|till|til|before) (.+?)"
                "(?: is| are|['’]s|['’]re) (?:done|ready|finished|cooked|baked|boiled|dry)$",
            Pattern::caseless),
    };
    static const Pattern still("\\b(?:still|yet|left|to go|more|longer)\\b", Pattern::caseless);
    for (const Pattern& form : forms) {
        const auto match = form.find(core);
        if (!match || (&form == &forms[0] && !still.find(core))) // "How long does an egg take" is for a cookery book.
            continue;
        if (const auto thing = timedThing(match->texts[0]))
            return AlarmWish{.kind = Kind::left, .isOfTimers = true, .which = *thing};
    }
    return std::nullopt;
}

NounlessWish timeLeft(const std::string& core)
{
    static const Pattern left(
        "^(?:how (?:much (?:time|longer)|long|many minutes)(?: do i| have i| is| are)?(?: there)?"
        "(?: still)?(?: have| got)?(?: left| remaining| to go)?|(?:how much )?time (?:left|remaining)"
        "|what(?:['’]s| is) left)(?: on it)?$",
        Pattern::caseless);
    static const Pattern says("\\b(?:left|remaining|longer|to go)\\b", Pattern::caseless);
    if (left.find(core) && says.find(core))
        return AlarmWish{.kind = Kind::left, .isOfTimers = true};
    if (auto wish = leftOfThing(core))
        return wish;
    static const Pattern ends("^(?:when|(?:at )?what time|by when) (?:will|is|are|does|do) (.+?) (?:be )?"
                              "(?:done|ready|finish|finished|cooked|baked|boiled|dry)$",
        Pattern::caseless);
    const auto match = ends.find(core);
    const auto thing = match ? timedThing(match->texts[0]) : std::nullopt;
    return thing ? NounlessWish(AlarmWish{.kind = Kind::ends, .isOfTimers = true, .which = *thing}) : std::nullopt;
}

NounlessWish otherHalfOrList(const std::string& core)
{
    static const Pattern half("^(?:no|nope)?[,]?\\s*(?:i (?:mean|meant|said)|make (?:it|that)|it is|it['’]s)?\\s*"
                              "(?:in the |at )?(?:evening|afternoon|night|morning|[ap]\\.?m\\.?)(?: instead| please)?$",
        Pattern::caseless);
    if (half.find(core))
        return AlarmWish{.kind = Kind::otherHalf, .which = core};
    static const Pattern when(
        "^(?:at )?(?:what time|when|which time) (?:(?:will|do|does|are|am|did|should|must) )?(?:you|i|we) "
        "(?:(?:will|going to|have to|need to|supposed to|set to|must|should) )*"
        "(?:(?:wake|get|waking|getting) (?:me|us)(?: up)?|wake up|waking up|get up|getting up|be woken(?: up)?|"
        "get woken(?: up)?|be up)(?: (.+))?$",
        Pattern::caseless);
    if (const auto match = when.find(core))
        return AlarmWish{.kind = Kind::list, .which = match->texts[0]};
    static const Pattern whether(
        "^(?:(?:will|are|were|do|did|is|am|have) )(?:you|i|we) (?:(?:going to|supposed to|gonna|set to|have to|need to|"
        "really|still) )*(?:(?:wake|get|waking|getting) (?:me|us)(?: up)?|wake up|waking up|getting up|get up|"
        "(?:be|being|get|getting) (?:woken|awakened|waked)(?: up)?)(?: (.+))?$",
        Pattern::caseless);
    static const Pattern wishing("^(?:will|do) (?:you|i) .*\\bplease\\b", Pattern::caseless);
    if (const auto match = whether.find(core); match && !wishing.find(core))
        return AlarmWish{.kind = Kind::list, .which = match->texts[0]};
    static const Pattern sleep("^how (?:long|much|many hours(?: of sleep)?)(?: sleep)? (?:can|do|will|may|could) i"
                               "(?: still| have| get to| get)*(?: to)?(?: sleep(?: for)?)?(?: tonight)?$",
        Pattern::caseless);
    static const Pattern sleeps("\\bsleep\\b", Pattern::caseless);
    if (sleep.find(core) && sleeps.find(core))
        return AlarmWish{.kind = Kind::left};
    static const Pattern hour(
        "^(?:what(?: time)?(?: is|['’]s)|when(?: is|['’]s)|tell me) (?:my|the|our) (.*?)(?:wake[- ]?up|waking) "
        "time(?: (.+))?$",
        Pattern::caseless);
    if (const auto match = hour.find(core))
        return AlarmWish{.kind = Kind::list, .which = trimmed(match->texts[0] + match->texts[1])};
    return std::nullopt;
}

NounlessWish waking(const std::string& core)
{
    static const Pattern wake(
        "^(?:(?:ensure|make sure|see to it)(?: that)? )?(?:(?:please )?(?:wake|get) (?:me|us)(?: up)?"
        "(?! (?:a|an|the|some|my|to|out)\\b(?! (?:hour|minute|quarter|half|couple|little)))|(?:wake|get) up "
        "(?:me|us)|i (?:need|want|would like|require)(?: a)? "
        "(?:waking|wake[- ]?up)(?: up)?|i (?:need|want|would like|have|wish) to be (?:woken|awakened)(?: up)?|(?:i "
        "(?:have|need|"
        "must|want|ought)(?: to)? |i['’]?d like to |i (?:wanna|gotta|should|would like to|will) |i(?:['’]ve)? "
        "got(?:ta| to) "
        ")?(?:get|wake|be) up"
        "|(?:i (?:have|need|must|want) to )?be (?:awake|woken(?: up)?)|call me(?: up)?(?= (?:at|in|on|by)\\b)"
        "|(?:let me know|tell me|ring|beep)(?: me)? when it(?: is|['’]s)|(?:ensure|make sure)(?: that)? i(?: am|['’]m) "
        "(?:up|awake))(?:\\s+|$)",
        Pattern::caseless);
    static const Pattern never("^(?:(?:do not|don['’]?t|no need to|never)\\s+(?:please )?wake|(?:stop|quit) waking) "
                               "(?:me|us)(?: up)?\\s*(.*)$",
        Pattern::caseless);
    static const Pattern inPlace(
        "^(?:wake|get) (?:me|us)(?: up)? (?:at )?(.+?) (?:instead of|rather than|and not)(?: at)? (.+)$",
        Pattern::caseless);
    if (const auto match = inPlace.find(core))
        return AlarmWish{.kind = Kind::move, .which = match->texts[1], .when = match->texts[0]};
    static const Pattern other(
        "^(?:wake|get) (?:me|us)(?: up)? (?:(?:an?|the|half|\\d+|one|two|ten|fifteen|twenty|thirty)[a-z ]*? )?"
        "(?:earlier|later|sooner)\\b(?: than .*)?\\s*(.*)$",
        Pattern::caseless);
    if (const auto match = other.find(core)) // By how much is asked, or from which hour.
        return AlarmWish{.kind = Kind::move, .which = AlarmLine::withoutLead(match->texts[0])};
    static const Pattern hour(
        "^(?:change|move|set|shift) (?:my|the|our) (?:wake[- ]?up|waking) (?:time|hour) to (.+)$", Pattern::caseless);
    if (const auto match = hour.find(core))
        return AlarmWish{.kind = Kind::move, .when = match->texts[0]};
    if (const auto match = never.find(core))
        return AlarmWish{.kind = Kind::cancelAll, .which = AlarmLine::withoutLead(match->texts[0])};
    static const Pattern told("^(?:let me know|tell me|ring|beep)", Pattern::caseless);
    const bool isWaking = !told.find(core);
    std::string words = core;
    if (!AlarmLine::take(wake, words))
        return std::nullopt;
    static const Pattern time(
        "^(?:$|at|in|on|by|before|after|around|about|every|each|tomorrow|today|tonight|when|early|for|to|as|next|this"
        "|(?:mon|tues|wednes|thurs|fri|satur|sun)day|half|quarter|\\d|noon|one|two|three|four|five|"
        "six|seven|eight|nine|ten|eleven|twelve|weekdays)\\b|^\\d|^$",
        Pattern::caseless);
    static const Pattern self("^(?:wake|get|be) up$", Pattern::caseless); // Said to somebody else.
    if (self.find(core))
        return std::nullopt;
    if (auto before = AlarmTraits::readBefore(words))
        return before;
    std::string name = AlarmLine::takeName(words);
    return time.find(words) ? NounlessWish(AlarmWish{
               .kind = Kind::set, .isWaking = isWaking, .text = AlarmLine::asTime(words), .name = std::move(name)})
                            : std::nullopt;
}

} // namespace

NounlessWish NounlessAlarm::read(const std::string& core)
{
    for (const auto reader : {snoozing, halting, timeLeft, otherHalfOrList, waking})
        if (auto wish = reader(core))
            return wish;
    return NounlessWaking::read(core);
}

} // namespace quorvell
