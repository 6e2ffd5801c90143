// SPDX-License-Identifier: MIT
// The patterns read the words as CalendarWords gives them.
#include "Understanding/skills/calendar/AgendaPhrases.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/DayAsking.h"
#include "Understanding/skills/calendar/EventActs.h"
#include "Understanding/skills/calendar/EventAlarm.h"
#include "Understanding/skills/calendar/EventAsking.h"
#include "Understanding/skills/calendar/EventNews.h"
#include "Understanding/skills/calendar/EventRemoving.h"
#include "Understanding/skills/calendar/EventSetting.h"
#include "Understanding/skills/calendar/EventWording.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaTopic.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/skills/calendar/reading/EventWay.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/time/TimeWords.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

constexpr const char* invitesNobody =
    "I cannot invite anybody: nothing is sent from here. I can put their names into the "
    "title of the event.";

constexpr const char* howToSay =
    "Just tell me. For example: put lunch with Ana into my calendar on friday at noon. Or: move "
    "it to saturday. Or: delete it.";

Found saying(std::string text)
{
    return Request{.answer = [text = std::move(text)](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{text, std::move(memory)};
    }};
}

bool namesCalendar(const std::string& plain)
{
    static const Pattern named("\\b(?:" + CalendarWords::calendar + "|" + CalendarWords::noun + ")\\b");
    return named.find(plain).has_value();
}

bool namesOwnCalendar(const std::string& plain)
{
    static const Pattern named("\\b" + CalendarWords::calendar + "\\b");
    return named.find(plain).has_value();
}

/// What an event is asked for by the first words. What follows them names it.
const std::deque<EventWay>& askedWays()
{
    static const std::deque<EventWay> ways = [] {
        const std::string tell =
            "^(?:(?:please|can you|could you|do you know|i want to know|i would like to know|tell me|let "
            "me know|check|find out|remind me|show me|and|so|just) )*";
        const std::string behind = "(?:$| (?:on|this|next|today|tomorrow|tonight)\\b)";
        std::deque<EventWay> all;
        const auto add = [&](const std::string& form, Aim aim) { all.emplace_back(tell + form, aim); };
        add("(?:where (?:is|are|will|was|do i have|does|do i need to be for|am i)|(?:what|which) "
            "(?:place|room|address) (?:is|"
            "are)|what is the (?:location|place|address|venue) (?:of|for)|the location of|location of) (.+)$",
            Aim::where);
        add("(?:who|with whom|with who|whom)(?: all)? (?:is|are|will|else is|am i|do i|comes|is coming|is going|did i) "
            "(.+)$",
            Aim::who);
        add("(?:how long (?:is|does|will|are)|when (?:does|do|will|is)(?= .* (?:end|finish|over|ends|done)" + behind
                + ")|what time "
                  "(?:does|do|will|is)(?= .* (?:end|finish|over|ends|done)"
                + behind + ")|until when is) (.+)$",
            Aim::ends);
        add("(?:when|at what time|time|what time|what date|what day|which day|how soon|on what day|what time time|time "
            "time)"
            "(?: (?:is|are|was|were|does|do|did|will|am i|do i have|have i)(?: the time of)?)? (.+)$",
            Aim::when);
        add("what is the (?:time|date|day|hour) (?:of|for) (.+)$", Aim::when);
        add("how (?:long|much time|many (?:days|weeks|hours)) (?:is it |is there |is left |are there |are left |left "
            "|do i have |to go )*"
            "(?:until|till|to|before) "
            "(.+)$",
            Aim::when);
        add("(?:is|are|was|were|will) (?:there |it true that |it |the |my |our |any )*(.+)$", Aim::confirm);
        add("(?:do|did|have|has|will|would) (?:i|we|you)(?: (?:have|got|see|already have|still have))? (.+)$",
            Aim::confirm);
        add("(?:has|have|had|did|does) (?:the|my|our) (.+)$", Aim::confirm);
        add("(?:if|whether|that) (?:there (?:is|are)|i have|we have|my|the) (.+)$", Aim::confirm);
        add("(?:confirm|verify) (?:that |if )?(.+)$", Aim::confirm);
        return all;
    }();
    return ways;
}

/// "A call", "yoga", but neither "anything" nor "an event".
bool namesAny(const EventSearch& search)
{
    return !search.name.empty() || (!search.noun.empty() && !EventName::isAnyNoun(search.noun));
}

/// Words that stand for a list: "show me", "what is on", "how many".
bool asksForList(const std::string& plain)
{
    static const Pattern asked(
        "^(?:(?:please|can you|could you|would you|i want to|i would like to|i need to|let me|hey|and|so|"
        "just|now|also) )*(?:what|which|whats|show|tell|list|read|give|display|see|check|open|view|"
        "bring up|pull up|look|find|get|go "
        "over|run|recap|evaluate|assess|analy[sz]e|inspect|explain|scan|share|present|provide|"
        "let us|anything|any|brief|update me|how many|how "
        "much|how does|how is|number of|do i|do we|have i|are there|is there|am i|say|speak|know|hear|"
        "announce|present|fetch|describe|summarize|summarise|review|remind me (?:what|which|of "
        "what)|name|mention|enumerate|recite|"
        "on my|in my)\\b");
    return asked.find(plain).has_value();
}

/// "Today's schedule", "upcoming events": nothing but what is asked for.
bool isBareList(const std::string& plain, const EventSearch& search)
{
    static const Pattern named("\\b(?:" + CalendarWords::calendar + "|(?:event|meeting|appointment|engagement)s)\\b");
    return named.find(plain) && search.name.empty();
}

/// "Show me tomorrow", "tell me about friday": nothing but days.
Found showingDays(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|would you|just|and|now|okay|so) )*(?:show|list|read|give|go "
        "through|tell me about|run through|walk me through)(?: (?:me|us))?(?: (?:about|for|out))?"
        " ((?:my |the |all of |whole )*\\S.*)$");
    const auto match = form.find(plain);
    if (!match || CalendarWords::isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0], around);
    if (!search || !search->days || !search->name.empty() || search->isUnclear)
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

bool isSetting(const std::string& plain)
{
    static const Pattern sets(
        "^(?:(?:please|can|could|would|you|i|we|to|need|want|like|have|just|go|ahead|and) )*(?:add|put|set|"
        "create|make|schedule|book|plan|arrange|enter|insert|mark|move|change|reschedule|postpone|"
        "push|shift|remind|note|remember|write|notify|alert|invite|rename|update|save|keep|block|"
        "pencil|forget|repeat|delete|remove|cancel|clear|erase|start|turn)\\b");
    return sets.find(plain).has_value();
}

/// "Is the dentist on tuesday or wednesday?" Neither day says where to look.
std::string withoutDaysToChoose(const std::string& subject)
{
    static const std::string day = "(?:on |for |in )?(?:today|tomorrow|(?:this|next) (?:week|month)|(?:this |next )?"
        + std::string(TimeVocabulary::weekday) + ")";
    static const std::string part = "(?:in the |the |in )?(?:morning|afternoon|evening)";
    static const Pattern choice("\\b(?:" + day + " or " + day + "|" + part + " or " + part + ")\\b");
    return trimmed(choice.replaceAll(subject, ""));
}

/// Of the calendar as it stands.
Found asking(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    // Neither "do I have to call Ana" nor "is there time for coffee".
    static const Pattern occasion(
        "\\b(?!calls?\\b|visit\\b|coffee\\b|drinks\\b|sessions?\\b|practice\\b|exam\\b|lecture\\b)"
        + CalendarWords::occasion + "\\b");
    static const Pattern duty(
        "^(?:and |so )?(?:do|did|will|would) (?:i|we) (?:have|need) to (?!be\\b|go\\b|attend\\b)");
    static const Pattern changed(
        " (?:been )?(?:re-?scheduled?|moved|changed|cancell?ed|postponed|delayed|still on)(?: yet)?$");
    static const Pattern span(
        "^(?:please |tell me )*how (?:long|much time|many (?:days|weeks|hours))\\b.*\\b(?:until|till|to|before)\\b");
    // Of a booking there is more to know than when it is.
    static const Pattern detail("\\b(?:number|numbers|code|codes|password|reference|pin|price|cost|id)\\b");
    static const Pattern toOthers(
        "\\bhappened\\b|^(?:please )?(?:tell|give|let|send|ask) (?!me\\b|us\\b|the\\b|my\\b|all\\b|any\\b)[a-z]+ ");
    static const Pattern howTo(
        "^how (?:do|can|could|would|should|to)\\b.*\\b(?:add|create|make|put|delete|remove|cancel|move|change|"
        "edit|set|schedule)\\b");
    if (howTo.find(plain) && namesCalendar(plain))
        return saying(howToSay);
    if (duty.find(plain) || toOthers.find(plain) || (detail.find(plain) && !namesOwnCalendar(plain)))
        return std::nullopt;
    // When somebody's birthday is may stand anywhere.
    static const Pattern birthday("\\b(?:birthdays?|anniversar(?:y|ies))\\b");
    const bool isNamed = namesCalendar(plain);
    static const Pattern asksWhether("^(?:is|are|was|do|does|will|if) ");
    static const Pattern onDay("\\b(?:on|this|next|today|tomorrow|coming up|upcoming|soon)\\b");
    const bool isBirthday = birthday.find(plain).has_value();
    static const Pattern birthdays("\\b(?:birthdays|anniversaries)\\b");
    if (!isNamed && isBirthday && !birthdays.find(plain) && !(asksWhether.find(plain) && onDay.find(plain)))
        return std::nullopt;
    static const Pattern open("\\b(?:planned|scheduled|happening|going on|coming up|lined up|in store)\\b");
    // "Do I have yoga this week?" "Is there a standup on friday?" "When does the call with Bob end?"
    static const Pattern owned(
        "^(?:(?:and|so|but|also) )*(?:(?:do|did|will) (?:i|we) have|(?:is|are|was) (?:there |my |our |the |still )?"
        "(?!(?:it|that|this|there|christmas|easter|today|tomorrow)\\b)(?:[a-z'’-]+ "
        "){1,4}?(?:on|this|next|today|tomorrow)"
        "\\b(?! sale| fire| top| "
        "time))(?!.*\\b(?:open|opened|closed|shut|sunny|raining|true|holiday|year|coming|going)\\b)");
    static const Pattern bounded(
        "^(?:and |so )?(?:when|what time|at what time|until when) (?:does|do|will|is|did) .*\\b(?:call|"
        "session|class|standup|review|lesson|practice|rehearsal|training|game|match|course|"
        "lecture|seminar|workshop|exam|show|visit|event)\\b.* (?:end|ends|finish|over|start|begin)$");
    static const Pattern whenOrWhere(
        "^(?:and |so )?(?:when|where|what time|at what time|how long|who) (?:is|are|does|will)\\b");
    static const Pattern endOfDay("^what is (?:the|my) (?:very )?(?:last|first) (?:thing|one)\\b");
    // "When do I meet Ana?" "What time is yoga on saturday?"
    static const Pattern meets(
        "^(?:and |so )?(?:when|where|what time|at what time|what day|which day) (?:do|am|will|should|is the next "
        "time) (?:i|we) (?:will )?(?:meet|meeting|see|seeing|visit|visiting|having|going to|go to)\\b");
    static const Pattern onThatDay(
        "^(?:and |so )?(?:when|what time|at what time) (?:is|are|does|do|will) (?:my |our |the "
        ")?(?!(?:it|that|this|there|"
        "here|sun\\w*|moon\\w*|dawn|dusk|easter|christmas|the sun|noon|midnight|high tide)\\b)[a-z'’ -]{2,40}? "
        "(?:start |begin |be )?"
        "(?:on|this|next|today|tomorrow|tonight)\\b(?!.*\\b(?:open|close|shut|in [a-z]+$|sunrise|sunset)\\b)");
    const bool isOwned = owned.find(plain).has_value();
    const bool isByName = bounded.find(plain) || (whenOrWhere.find(plain) && CalendarWords::namesPartOfDay(plain));
    if (CalendarWords::isOfOthers(plain) || isSetting(plain)
        || (!isNamed && !isOwned && !occasion.find(plain) && !open.find(plain) && !isByName && !endOfDay.find(plain)
            && !isBirthday && !meets.find(plain) && !onThatDay.find(plain)))
        return std::nullopt;
    for (const auto& [form, aim] : askedWays()) {
        const auto match = form.find(plain);
        if (!match)
            continue;
        const std::string subject = withoutDaysToChoose(changed.replaceAll(match->texts[0], ""));
        auto search = CalendarWords::search(subject, around);
        const bool isChoice = subject != trimmed(match->texts[0]); // Or what became of it: told as it stands.
        if (isOwned && !isNamed && !occasion.find(plain) && search && (!namesAny(*search) || !search->days))
            return std::nullopt;
        const bool isOpen =
            search && aim == Aim::confirm && (isOwned && !isNamed ? !namesAny(*search) : search->name.empty());
        if (!search || (!isNamed && !namesAny(*search) && !search->days))
            return std::nullopt;
        static const Pattern back("\\b(?:last(?! for\\b| on\\b|$)|was|were|did|previous)\\b");
        search->isBack = aim != Aim::confirm && !search->days && back.find(plain) && !search->isNext;
        search->aim = isOpen ? Aim::tell : isChoice && aim == Aim::confirm ? Aim::when : aim;
        search->isSpan = span.find(plain).has_value();
        return EventLookup::request(*std::move(search), core);
    }
    static const Pattern planned("\\b(?:planned|scheduled|happening|going on|coming up|lined up|in store)\\b");
    static const Pattern verb("^(?:(?:please|can you|could you) )*(?:name|mention|enumerate|recite) ");
    auto search = CalendarWords::search(verb.replaceAll(plain, ""), around);
    const bool isOfDay =
        search && search->days && search->name.empty() && (planned.find(plain) || endOfDay.find(plain));
    if ((!isNamed && !isOfDay && !birthdays.find(plain)) || !search
        || (!asksForList(plain) && !isBareList(plain, *search) && !birthdays.find(plain)))
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

/// "Do I have any openings on my schedule for tomorrow?"
Found askingForTime(const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern gap(
        "^(?:(?:please|can you|could you|show me|tell me|find|check|let me know) )*(?:do i|do we|are there|"
        "is there|have i|any|what|when|show|find|check|am i|are we|how much|if|where)\\b.*\\b(?:openings?|"
        "open (?:time|slots?)|availability|available|free|gaps?|(?:time )?slots?)\\b");
    static const Pattern calendarNamed("\\b" + CalendarWords::calendar + "\\b");
    std::string others;
    auto days = SpokenDays::find(plain, around, others);
    if (!gap.find(plain) || !calendarNamed.find(plain) || SpokenLength::read(plain))
        return std::nullopt;
    return DayAsking::freeTime(std::move(days));
}

/// "Move the flight home to 5:30 pm": a trip that stands in the calendar is no trip to be booked.
Found movingTrip(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you) )*(?:move|reschedule|shift|push|postpone|delay|put)(?: back)? "
        "(?:the|my|our) (.+)$",
        Pattern::caseless);
    static const Pattern trip(
        "\\b(?:flight|train|bus|hotel|trip|taxi|cab|ferry|film|movie|concert|show|delivery|pizza)\\b");
    const auto end = TimeWords::atEnd(core, around);
    const auto match = end ? form.find(end->rest) : std::nullopt;
    if (!match || !trip.find(plain) || CalendarWords::isOfOthers(plain) || !around.offers("change_event"))
        return std::nullopt;
    constexpr int minutesOfDay = 24 * 60;
    const auto days = TimeWords::daysIn(end->time);
    const auto length = SpokenLength::read(end->time);
    const int minutes = days ? *days * minutesOfDay : length && length->rest.empty() ? length->minutes : 0;
    return AgendaRules::request({.kind = AgendaIntent::Kind::move,
        .days = SpokenDays::ahead(around),
        .minutes = minutes,
        .title = match->texts[0],
        .when = minutes > 0 ? std::string() : end->time});
}

/// "Please put me your input to know my schedule"
Found knowing(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form("\\b(?:to|wanna) (?:know|see|check|view|hear|look at|find out) (?:(?:about|what is "
                              "(?:on|in)) )?((?:my|the|our) "
        + CalendarWords::calendar + "\\b.*)$");
    const auto match = form.find(plain);
    auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    if (!search || !search->name.empty())
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

Found restOfList(const std::string& plain)
{
    static const Pattern rest(
        "^(?:(?:and|please|can you|could you|now) )*(?:(?:read|tell|show|give|list|say)(?: me)?(?: out)? )?"
        "(?:(?:the|all the) (?:rest|others|other ones|remaining(?: ones)?)(?: of (?:it|them|the list))?|"
        "(?:what|which|who) else(?: is (?:on|there|on it|in it))?|(?:and )?the rest|(?:the |some )?more"
        "(?: of (?:it|them))?|go on|continue|keep going)$");
    if (!rest.find(plain))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return AgendaTopic::tellRest(std::move(memory));
    }};
}

Found inviting(const std::string& core, const std::string& plain)
{
    static const Pattern adds(
        "^(?:[Pp]lease |[Cc]an you |[Cc]ould you )*[Aa]dd (?:\\p{Lu}[\\p{L}'’-]+|my (?:wife|husband|"
        "boss|mom|mum|dad|sister|brother|friend|colleague|team))(?: and \\p{Lu}[\\p{L}'’-]+)* (?:to|as "
        "an? (?:guest|attendee|participant) (?:to|of|for)) (?:the|my|our) (?:\\S+ "
        "){0,3}(?:meeting|appointment|event|call|lunch|dinner|party|interview)\\b");
    if (adds.find(core))
        return saying(invitesNobody);
    static const Pattern invites(
        "^(?:please |can you |could you )*(?:invite|send (?:an? |the )?(?:invites?|invitations?))\\b");
    return invites.find(plain) ? saying(invitesNobody) : std::nullopt;
}

} // namespace

namespace {

Found askedAs(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    if (auto request = askingForTime(plain, around))
        return request;
    if (auto request = EventAsking::read(plain, core, around))
        return request;
    if (auto request = showingDays(plain, core, around))
        return request;
    if (auto request = DayAsking::read(plain, core, around))
        return request;
    return asking(plain, core, around);
}

} // namespace

Found AgendaPhrases::read(const std::string& core, const RuleSurroundings& around)
{
    constexpr std::size_t mostBytes = 300;
    if (core.size() > mostBytes || !around.offers("whats_on"))
        return std::nullopt;
    const std::string plain = CalendarWords::of(core).plain;
    if (auto request = inviting(core, plain))
        return request;
    if (auto request = restOfList(plain))
        return request;
    if (auto request = EventAlarm::read(core, around))
        return request;
    if (auto request = EventActs::read(core, plain, around))
        return request;
    if (auto request = EventNews::read(core, around))
        return request;
    if (auto request = movingTrip(core, plain, around))
        return request;
    if (auto request = EventRemoving::read(core, around))
        return request;
    if (auto request = knowing(plain, core, around))
        return request;
    const std::string asked = EventWording::asked(plain);
    if (auto request = asked != plain ? askedAs(asked, core, around) : std::nullopt)
        return request;
    if (auto request = EventSetting::read(core, around))
        return request;
    return askedAs(plain, core, around);
}

} // namespace quorvell
