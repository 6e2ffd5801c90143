// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventRemoving.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/RemovalNews.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/words/RequestWords.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

const std::string& polite()
{
    static const std::string words =
        "(?:(?:please|can|could|would|will|you|i|we|to|need|want|have|like|in|on|from|open|go|my|the|"
        "and|then|just|help|me|hi|hey|ok|okay|google|pls|plz|kindly|go ahead|let us|"
        + CalendarWords::calendar + ") )*";
    return words;
}

const std::string& occasion = CalendarWords::occasion;

/// "The yoga, I quit": why is no part of the name.
std::string withoutReason(const std::string& core)
{
    static const Pattern reason(
        "[,;.]\\s*(?:(?:please|pls|thanks|thank you)[,;.]?\\s*)?(?:i|i['’]m|i['’]ll|i['’]ve|we|we['’]re|"
        "he|he['’]s|she|she['’]s|they|they['’]re|it|it['’]s|half|nobody|no one|"
        "because|since|as|so|no need|thanks|thank you|please|pls|ok|okay|sorry|there)\\b(?! cancel| delete).*$"
        "|\\s+(?:because|since|as) (?:i|we|he|she|they|it|the|my|half|nobody)\\b.*$",
        Pattern::caseless);
    static const Pattern wish("\\s+and (?:let|tell) me\\b.*$", Pattern::caseless);
    static const Pattern courtesy("[,;]?\\s+(?:please|pls|plz|thanks|thank you|kindly)$", Pattern::caseless);
    const std::string kept = trimmed(courtesy.replaceAll(wish.replaceAll(reason.replaceAll(core, ""), ""), ""));
    return kept.empty() ? core : kept;
}

Found answering(std::string text)
{
    return Request{.answer = [text = std::move(text)](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{text, std::move(memory)};
    }};
}

bool names(const std::string& plain)
{
    static const Pattern named("\\b(?:" + CalendarWords::calendar + "|" + CalendarWords::noun + ")\\b");
    return named.find(plain).has_value();
}

Found cancelling(std::optional<EventSearch> search, const std::string& core)
{
    if (!search)
        return std::nullopt;
    search->aim = Aim::cancel;
    return EventLookup::request(*std::move(search), core);
}

bool isOfOthers(const std::string& plain)
{
    static const Pattern other(
        "\\b(?:lists?|notes?|notebook|reminders?|alarms?|timers?|e-?mails?|messages?|files?|photos?|"
        "songs?|music|tabs?|windows?|subscription|order|account)\\b");
    return other.find(plain).has_value();
}

/// "Remove John from dinner tomorrow": that is another name for it, and no end of it.
Found removingPerson(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form("^" + polite()
        + "(?:remove|take|drop|delete) (?!(?:it|that|this|the|all|every|everything|any)\\b)([a-z]+) "
          "(?:from|off|out of) (?:(?:my|the|our) )?(.*\\b(?:"
        + CalendarWords::noun + "|" + occasion + ")\\b.*)$");
    const auto match = form.find(plain);
    static const Pattern thing("\\b(?:" + CalendarWords::noun + "|" + occasion + ")\\b");
    static const Pattern calendar("\\b" + CalendarWords::calendar + "\\b");
    if (!match || thing.find(match->texts[0]) || calendar.find(match->texts[1]))
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[1], around);
    if (!search || search->name.empty())
        return std::nullopt;
    search->aim = Aim::rename;
    search->isAll = false;
    return EventLookup::request(*std::move(search), core);
}

/// What is to be deleted, by the verb in front of it; with the calendar behind it in two parts.
std::optional<PatternMatch> wished(const std::string& plain)
{
    static const std::string verb =
        "(?:delete|remove|cancel|erase|clear(?: off| out| up)?|wipe(?: out| off)?|clean(?: "
        "out| up| off)?|empty|drop|scrap|"
        "scratch|disregard|get rid of|do away with|call off|strike|cross "
        "out|unschedule|unbook|trash|purge|format|reset|"
        "discard|eliminate|throw out|ditch|bin|void|take off|take out|forget about|nix|axe|"
        "kill|abolish|withdraw|rescind|retract|revoke|decline|annul|nullify|chuck|dump|del|rm|back out of|opt out "
        "of|pull out of|bail on|leave out|free up|let go of|take away)";
    static const Pattern asks("^" + polite() + verb + "\\b(?: (?:off|out))? ?(.*)$");
    static const Pattern takes(
        "^(?:please |can you |could you )?(?:take|pull|strike|leave|knock|get)\\b (.+) (?:off|out|from|out "
        "of|off of)(?: of)? (?:my|the|our) "
        + CalendarWords::calendar + "\\b(.*)$");
    // "Take lunch off friday"
    static const Pattern offDay(
        "^(?:please |can you |could you )?(?:take|knock|strike|get) (?:(?:the|my|our) )?(?!.*\\b(?:day|week|time) "
        "off\\b)"
        "(.+) (?:off|out of)(?: of)? ((?:my )?(?:today|tomorrow|(?:mon|tues|wednes|thurs|fri|satur|sun)day).*)$");
    // "Make wednesday free"
    static const Pattern makesFree(
        "^" + polite() + "(?:make|get) (?:(?:my|the) )?(.+) (?:free|clear|empty|available)$");
    // "Yoga delete", "lunch cancel on friday"
    static const Pattern verbBehind(
        "^(?!(?:please|do|not|how|what|when|who|why|where|can|could|will|would|i|we|you|to|did|is|are|add|set|put|"
        "remind|note|make|create)\\b)((?:[a-z'’]+ ){0,3}?"
        + occasion
        + "(?: with [a-z]+)?) (?:delete|cancel|remove|erase|cancelled|canceled)(?: it| that)?(?: "
          "((?:on|for|this|next|today|"
          "tomorrow|at) ?.*))?$");
    // "Take yoga off"
    static const Pattern off("^" + polite() + "(?:take|knock|strike) ((?:[a-z'’]+ ){0,3}?\\b" + occasion
        + "(?: with [a-z]+)?) (?:off|out)$");
    for (const Pattern* form : {&takes, &offDay, &makesFree, &verbBehind, &off})
        if (auto match = form->find(plain))
            return match;
    return asks.find(plain);
}

/// "The 3 pm on tuesday", "the second one": named by nothing but its time.
bool isByTime(const EventSearch& search)
{
    return search.name.empty() && search.days && (!search.days->from.allDay || search.place > 0);
}

/// What stands nowhere as one of the calendar: by its day, or by a word that only things with a time have.
Found removingLoose(
    const std::string& subject, const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern time(
        "^(?:everything|what (?:i have|i have got|is on)|(?:the )?\\d{1,2}(?:st|nd|rd|th)?(?: of)? "
        "(?:january|february|march|april|may|june|"
        "july|august|september|october|november|december)$|whatever(?: i have| is)?|anything|all(?: of it| of "
        "that)?|(?:my|the) (?:whole |entire )?(?:day|week|"
        "morning|afternoon|evening|weekend|plans)|(?:(?:my|the) )?(?:mon|tues|wednes|thurs|fri|satur|sun)day(?: "
        "(?:morning|afternoon|evening|night))?$|(?:my|the) (?:mon|tues|wednes|thurs|fri|satur|sun)day)\\b");
    static const Pattern pronoun("\\b(?:it|that|ones?|them|those|these)\\b(?! (?:week|month|morning|"
                                 "afternoon|evening|weekend|day)\\b)");
    static const Pattern ownVerb("^" + polite() + "(?:take off|take out|nix|unschedule|unbook|axe|kill)\\b");
    static const Pattern plans("^(?:plans|things|stuff|activities|commitments|bookings|reservations)$");
    static const Pattern certain("^" + polite() + "(?:unschedule|unbook)\\b");
    static const Pattern occasional("\\b" + occasion + "\\b");
    auto search = CalendarWords::search(subject, around);
    if (!search || search->isUnclear)
        return std::nullopt;
    const bool isOccasion = occasional.find(subject).has_value();
    const bool isOfDaysAlone = search->days && !search->hour && search->name.empty()
        && (search->noun.empty() || plans.find(search->noun)) && search->place == 0 && !search->isLast
        && !search->isNext && !pronoun.find(subject) && search->days->from.adding(1) != search->days->to;
    if (time.find(subject) || isOfDaysAlone) {
        search->isAll = true;
        const bool isBounded = search->days || !search->anchor.empty() || (isOccasion && !search->except.empty());
        return isBounded && search->name.empty() ? cancelling(std::move(search), core) : std::nullopt;
    }
    search->isLoose = true;
    const bool isMore = search->days || search->place > 0 || search->name.find(" and ") != std::string::npos;
    if (isByTime(*search) || (isOccasion && !search->name.empty() && (isMore || ownVerb.find(plain)))
        || (certain.find(plain) && !search->name.empty()))
        return cancelling(std::move(search), core);
    return std::nullopt;
}

/// "Standup on friday only", "not attending the yoga class any longer"
std::string withoutLeftovers(const std::string& subject)
{
    static const Pattern ends(
        "^(?:(?:not|no longer) (?:attending|going to|having|doing|coming to) )"
        "|(?:(?<=day|row|ght|eek|onth) (?:only|alone)|(?<=.) (?:anymore|any longer|clean|for good|"
        "entirely|altogether))$");
    return trimmed(ends.replaceAll(subject, ""));
}

/// "I'm sick, cancel everything today", "I'm on vacation next week, clear my calendar": the days may stand in the
/// reason.
Found behindReason(const std::string& said, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:i|i['’]m|i['’]ve|i['’]ll|we|we['’]re|my|our|the|that|it|it['’]s)\\b([^,;.!]{2,80})[,;.!]\\s*"
        "((?:so |and |please |can you |could you |then )*(?:delete|remove|cancel|clear|erase|wipe|"
        "call off|empty|free up)\\b.+)$",
        Pattern::caseless);
    static const Pattern pronoun(
        "\\b(?:it|that|them|this)$|\\b(?:it|that|them|this) (?:from|off|out|please)\\b", Pattern::caseless);
    const auto match = form.find(said);
    if (!match || pronoun.find(match->texts[1]))
        return std::nullopt;
    std::string others;
    const auto ownDays = SpokenDays::find(match->texts[1], around, others);
    const auto days = ownDays ? std::nullopt : SpokenDays::find(match->texts[0], around, others);
    return EventRemoving::read(match->texts[1] + (days ? " " + days->words : ""), around);
}

} // namespace

Found EventRemoving::read(const std::string& said, const RuleSurroundings& around)
{
    static const Pattern denied(
        "^(?:please )?(?:do not|never) (?:ever )?(?:delete|remove|cancel|erase|clear|wipe|drop)\\b");
    static const Pattern whole("^(?:(?:my|the|our|whole|entire|all|of|everything|in|on|from|out) ?)*"
        + CalendarWords::calendar + "(?: clean)?$");
    static const Pattern everything("\\b(?:everything|all|whatever)\\b");
    static const Pattern clears(
        "^" + polite() + "(?:clear|clean|wipe|empty|erase|reset|format)\\b.*\\b" + CalendarWords::calendar + "\\b");
    if (auto request = behindReason(said, around))
        return request;
    static const Pattern series("\\b(?:repeating|recurring|repeated|recurrent)\\b");
    static const Pattern each("\\beverything\\b|\\b(?:all|every|each)(?: (?:of|the|my|our|single|upcoming|future|"
                              "scheduled|calendar))* (?:"
        + CalendarWords::noun + "|" + CalendarWords::calendar + ")\\b|\\b(?:whole|entire|complete) "
        + CalendarWords::calendar);
    const std::string core = withoutReason(said);
    const std::string plain = CalendarWords::of(core).plain;
    if (denied.find(plain) && names(plain))
        return answering("All right. I have changed nothing.");
    static const Pattern wishBehind(
        "(?: so| and| then)*(?: please| just| can you| could you| i want to)* (?:delete|remove|cancel|"
        "take|get)(?: (?:it|that|this))?(?: (?:off|out|from|away)\\b.*)?$");
    if (auto request = RemovalNews::read(wishBehind.replaceAll(plain, ""), core, around))
        return request;
    const auto match = wished(plain);
    if (!match || isOfOthers(plain))
        return std::nullopt;
    if (auto request = removingPerson(plain, core, around))
        return request;
    const std::string subject =
        withoutLeftovers(trimmed(match->texts.size() > 1 ? match->texts[0] + " " + match->texts[1] : match->texts[0]));
    if (!names(plain))
        return removingLoose(subject, plain, core, around);
    if (whole.find(subject))
        return EventLookup::request(
            {.aim = Aim::cancel, .isAll = true, .isWide = each.find(subject).has_value()}, core);
    auto search = CalendarWords::search(subject, around);
    if (!search)
        return std::nullopt;
    const bool isEmptied = clears.find(plain) && search->days && search->name.empty();
    search->isAll = search->isAll || everything.find(subject) || isEmptied || !search->except.empty();
    search->isOfSeries = series.find(subject).has_value();
    search->isAll = search->isAll || search->isOfSeries;
    search->isWide = search->isAll && !search->days && search->except.empty() && each.find(subject);
    return cancelling(std::move(search), core);
}

Found EventRemoving::readNews(const std::string& said, const RuleSurroundings& around)
{
    static const Pattern wishBehind(
        ",\\s*(?:so |please |can you |could you )*(?:remove|cancel|delete|take)\\b", Pattern::caseless);
    static const Pattern behind(",.*$"); // "I don't need the dentist any more, the tooth fell out"
    const std::string core = withoutReason(said.substr(0, said.find_first_of(";.")));
    const std::string plain = CalendarWords::of(wishBehind.find(core) ? core : behind.replaceAll(core, "")).plain;
    return RemovalNews::readStatement(plain, core, around);
}

} // namespace quorvell
