// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventRemoving.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
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

const std::string occasion(
    "(?:party|dinner|lunch|breakfast|brunch|concert|wedding|interview|haircut|lesson|class|training|dentist|doctor|"
    "vet|game|trip|date|yoga|gym|standups?|call|session|practice|rehearsal|workshop|seminar|flight|drinks|coffee)");

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
    static const std::string verb = "(?:delete|remove|cancel|erase|clear(?: off| out| up)?|wipe(?: out| off)?|clean(?: "
                                    "out| up| off)?|empty|drop|scrap|"
                                    "scratch|disregard|get rid of|do away with|call off|strike|cross "
                                    "out|unschedule|unbook|trash|purge|format|reset|"
                                    "discard|eliminate|throw out|ditch|bin|void|take off|take out|forget about|nix|axe|"
                                    "kill|abolish|withdraw|rescind|retract)";
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
    auto match = takes.find(plain);
    if (!match)
        match = offDay.find(plain);
    return match ? match : asks.find(plain);
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
    static const Pattern ownVerb("^" + polite() + "(?:take off|take out|nix|unschedule|unbook|axe|kill)\\b");
    static const Pattern occasional("\\b" + occasion + "\\b");
    auto search = CalendarWords::search(subject, around);
    if (!search || search->isUnclear)
        return std::nullopt;
    if (time.find(subject)) {
        search->isAll = true;
        return search->days && search->name.empty() ? cancelling(std::move(search), core) : std::nullopt;
    }
    search->isLoose = true;
    const bool isOccasion = occasional.find(subject).has_value();
    const bool isMore = search->days || search->place > 0 || search->name.find(" and ") != std::string::npos;
    if (isByTime(*search) || (isOccasion && !search->name.empty() && (isMore || ownVerb.find(plain))))
        return cancelling(std::move(search), core);
    return std::nullopt;
}

/// "Skip standup on thursday", "no more standups on fridays".
Found skipping(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form("^" + polite() + "(?:skip|no more|no) (?:(?:my|the|our) )?(.+)$");
    static const Pattern series("\\bevery\\b|days\\b|^" + polite() + "no more\\b");
    static const Pattern thing("\\b(?:" + CalendarWords::noun + "|" + occasion + ")\\b");
    const auto match = form.find(plain);
    if (!match || !thing.find(match->texts[0]) || isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0], around);
    if (!search || search->name.empty() || search->isUnclear || (!search->days && !series.find(plain)))
        return std::nullopt;
    return cancelling(std::move(search), core);
}

/// "The yoga class has been cancelled"
Found endingThat(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:my|the|our) )?(?!(?:is|are|was|were|has|have|did|does|do|if|when|what|why|i|we|you)\\b)(.+?) "
        "(?:is|are|was|"
        "got|has been|have been|had been) (?:cancelled|canceled|called off|off|scrapped)(?: now)?$");
    static const Pattern thing("\\b(?:" + CalendarWords::noun + "|" + occasion + ")\\b");
    const auto match = form.find(plain);
    if (!match || !thing.find(match->texts[0]) || isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0], around);
    return search && !search->isUnclear ? cancelling(std::move(search), core) : std::nullopt;
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
    const std::string core = withoutReason(said);
    const std::string plain = CalendarWords::of(core).plain;
    if (denied.find(plain) && names(plain))
        return answering("All right. I have changed nothing.");
    if (auto request = skipping(plain, core, around))
        return request;
    if (auto request = endingThat(plain, core, around))
        return request;
    const auto match = wished(plain);
    if (!match || isOfOthers(plain))
        return std::nullopt;
    if (auto request = removingPerson(plain, core, around))
        return request;
    const std::string subject =
        trimmed(match->texts.size() > 1 ? match->texts[0] + " " + match->texts[1] : match->texts[0]);
    if (!names(plain))
        return removingLoose(subject, plain, core, around);
    if (whole.find(subject))
        return EventLookup::request({.aim = Aim::cancel, .isAll = true}, core);
    auto search = CalendarWords::search(subject, around);
    if (!search)
        return std::nullopt;
    const bool isEmptied = clears.find(plain) && search->days && search->name.empty();
    search->isAll = search->isAll || everything.find(subject) || isEmptied || !search->except.empty();
    return cancelling(std::move(search), core);
}

Found EventRemoving::readNews(const std::string& said, const RuleSurroundings& around)
{
    static const std::string name = "(?:(?:my|the|our) )?(.+?)";
    static const Pattern without(
        "^(?:i am|i will|i was|we are|we will|i do|i can|we do|i|we)(?: not|not)? (?:going to |be )*(?:not )?"
        "(?:having|have|going to|go to|attending|attend|doing|do|need|needing|making|make it to|coming to|be at) "
        + name + "(?: anymore)?(?:,? (?:so )?(?:please )?(?:can you |could you )?(?:remove|cancel|delete|take) .*)?$");
    static const Pattern wishBehind(
        ",\\s*(?:so |please |can you |could you )*(?:remove|cancel|delete|take)\\b", Pattern::caseless);
    static const Pattern negative("\\b(?:not|cannot|no longer|never)\\b");
    static const Pattern wish("\\banymore\\b|\\bno longer\\b|\\b(?:remove|cancel|delete) (?:it|that)\\b|"
                              "\\bnot (?:be )?(?:going to|attending|coming to|making) (?:my|the|our)\\b");
    static const Pattern question(
        "^(?:is|are|was|were|has|have|did|does|do|can|could|what|when|where|who|why|how|which|if)\\b");
    const std::string core = withoutReason(said.substr(0, said.find_first_of(";.")));
    static const Pattern behind(",.*$"); // "I don't need the dentist any more, the tooth fell out"
    const std::string plain = CalendarWords::of(wishBehind.find(core) ? core : behind.replaceAll(core, "")).plain;
    if (!around.offers("change_event") || question.find(plain) || isOfOthers(plain))
        return std::nullopt;
    const bool isNews = negative.find(plain) && wish.find(plain);
    const auto match = isNews ? without.find(plain) : std::nullopt;
    auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    if (!search || search->isUnclear || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    return cancelling(std::move(search), core);
}

} // namespace quorvell
