// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventSetting.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/EventBlocking.h"
#include "Understanding/skills/calendar/EventFragment.h"
#include "Understanding/skills/calendar/SeveralEvents.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

const std::string lead =
    "^(?:(?:please|can|could|would|will|you|i|we|to|need|want|like|have|just|go ahead|and|help me|hi|hey|"
    "ok|google|pls|kindly),? )*";

AgendaIntent intentOf(EventWords event, bool isUnasked)
{
    AgendaIntent intent = AgendaIntent::ofNew(std::move(event));
    intent.isUnasked = isUnasked;
    return intent;
}

Found adding(EventWords event, bool isUnasked)
{
    static const Pattern nothing("^(?:(?:an? |the |calendar )*(?:event|entry)|it|that|this|them)$", Pattern::caseless);
    if (nothing.find(event.title)) // It is no name: what it is, is asked for.
        event.title.clear();
    return AgendaRules::request(intentOf(std::move(event), isUnasked));
}

/// "Set up a meeting with Bob": also where no time is named.
std::optional<EventWords> eventIn(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern wish(lead
            + "(?:set up|set|make|create|schedule|book|plan|arrange|organi[sz]e|add|fix|put "
              "in|put|input|insert|enter|new) "
              "(?:(?:me|us) )?(?=(?:an?|the|another|one|my|our|new) |(?:\\w+ )?(?:meeting|appointment))(?:(?:\\S+) "
              "){0,5}?(?:meeting|appointment|conference|interview|event)\\b(?!s)",
        Pattern::caseless);
    static const Pattern verb(lead
            + "(?:set up|set|make|create|schedule|book|plan|arrange|organi[sz]e|add|fix|put "
              "in|put|input|insert|enter|new) "
              "(?:(?:me|us) )?",
        Pattern::caseless);
    static const Pattern other(
        "\\b(?:reminders?|remind|alarms?|timers?|lists?|notes?|notifications?|e-?mails?|messages?|to the "
        "(?:meeting|appointment|event)|link|files?|move|change|later|earlier|longer|shorter|tables?|flights?|hotels?|"
        "tickets?|taxi|cab|train|"
        "restaurant)\\b");
    static const Pattern shared(lead
        + "(?:schedule|book|plan|arrange|organi[sz]e|set(?: up)?|add|put in|pencil in) (?:(?:an?|the|my|our) )?"
          "(?:(?!to )\\w+ ){0,2}(?:lunch|dinner|breakfast|brunch|coffee|drinks|call|date|session|lesson|party|visit|"
          "game|supper|tea|haircut|checkup|check up|training|rehearsal|workshop)\\b");
    static const Pattern something(lead
        + "(?:put|add|enter|write) (?:something|a thing|things|stuff) (?:in|into|to|on) (?:my|the|our) "
        + CalendarWords::calendar + "\\b");
    if (something.find(plain)) {
        EventWords event{.start = EventWords::read(core, around).start};
        return event;
    }
    if ((!wish.find(plain) && !shared.find(plain)) || other.find(plain))
        return std::nullopt;
    const auto match = verb.find(core);
    if (!match)
        return std::nullopt;
    static const Pattern named("^(?:(?:an?|the|new|another|one) )*(?:(?:calendar )?(?:event|entry) (?!with\\b))"
                               "(?:(?:called|named|titled|for|about|of) )?",
        Pattern::caseless);
    static const Pattern nothing("^(?:(?:calendar )?(?:event|entry))?$", Pattern::caseless);
    EventWords event = EventWords::read(named.replaceAll(trimmed(core.substr(match->range.end)), ""), around);
    if (nothing.find(event.title))
        event.title.clear();
    return event;
}

/// "... and remind me 30 minutes before".
Found makingWithReminder(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern behind(
        "^(.+?),? (?:and |with |then )(?:also |please )*(?:(?:remind|notify|alert|tell) me|(?:set |give me |add )?an? "
        "(?:reminder|notification|alert)) ((?:an?|one|two|three|half an|ten|fifteen|twenty|thirty|\\d{1,3}) "
        "?(?:minute|min|hour|hr|day)s?) (?:before|ahead|prior|in advance|earlier|beforehand)(?: (?:it|that|the "
        "\\w+)(?: starts| begins)?)?$",
        Pattern::caseless);
    const auto match = behind.find(core);
    if (!match)
        return std::nullopt;
    constexpr int minutesOfDay = 24 * 60;
    const auto days = TimeWords::daysIn(match->texts[1]);
    const auto length = SpokenLength::read(match->texts[1]);
    auto event = eventIn(match->texts[0], CalendarWords::of(match->texts[0]).plain, around);
    if (!event || (!days && !length))
        return std::nullopt;
    AgendaIntent intent = intentOf(*std::move(event), false);
    intent.remindMinutes = days ? *days * minutesOfDay : length->minutes;
    return AgendaRules::request(std::move(intent));
}

/// "12th July is Ana's birthday, add that to my calendar".
Found birthday(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form("^(.+?) is (.+?(?:birthday|anniversary))\\b(.*)$", Pattern::caseless);
    static const Pattern reversed(
        "^(.+?(?:birthday|anniversary)) is (?:on )?(.+?)(?:[,;.]| and | so |$)(.*)$", Pattern::caseless);
    static const Pattern calendar("\\b" + CalendarWords::calendar + "\\b");
    static const Pattern asks("^(?:is|when|what|does|do|which|where|who|if|whether)\\b");
    if (!calendar.find(plain) || asks.find(plain))
        return std::nullopt;
    const auto match = form.find(core);
    const auto turned = match ? std::nullopt : reversed.find(core);
    if (!match && !turned)
        return std::nullopt;
    static const Pattern verb("^(?:put|add) ", Pattern::caseless);
    const std::string date = verb.replaceAll(match ? match->texts[0] : turned->texts[1], "");
    const std::string title = verb.replaceAll(match ? match->texts[1] : turned->texts[0], "");
    EventWords event = EventWords::read(title + " on " + date, around);
    return event.start ? adding(std::move(event), false) : std::nullopt;
}

/// "Attend church every sunday at 11 am", behind "I would like to"; "I am meeting Bob on friday".
Found attending(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:attend|be attending|go attend) |(?:i am|i['’]m|we are|we['’]re) (?=(?:meeting|seeing|visiting|"
        "travell?ing|flying) ))(?=\\S)",
        Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    const bool isVerb =
        core.front() == 'a' || core.front() == 'A' || core.starts_with("be ") || core.starts_with("go ");
    EventWords event = EventWords::read(isVerb ? core : core.substr(match->range.end), around);
    return event.start && !event.title.empty() ? adding(std::move(event), true) : std::nullopt;
}

/// "Put lunch with Ana into my calendar on friday": whatever it is called, it is an event.
Found entering(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|would you|will you|just|go ahead and) )*(?:put|add|enter|"
        "write|pop|stick|get|insert|input|include|mark|save|schedule)(?: down)? (?=\\S)",
        Pattern::caseless);
    static const Pattern place(
        "\\b(?:in|into|to|on|onto|in to|on to) (?:(?:my|the|our) )?(?:(?:work|family|personal|own|phone) )?"
        + CalendarWords::calendar + "\\b");
    static const Pattern other(
        "\\b(?:lists?|notes?|notebook|reminders?|remind|alarms?|timers?|something|event|events)\\b");
    static const Pattern pronoun("^(?:it|that|this|them|these|those)\\b", Pattern::caseless);
    const auto match = form.find(core);
    if (!match || !place.find(plain) || other.find(plain))
        return std::nullopt;
    const std::string said = trimmed(core.substr(match->range.end));
    EventWords event = EventWords::read(said, around);
    if (pronoun.find(said) || event.title.empty() || CalendarWords::of(event.title).plain.empty())
        return std::nullopt;
    return adding(std::move(event), false);
}

/// What else a thing with a time may be for.
bool isForOthers(const std::string& plain)
{
    static const Pattern other("\\b(?:lists?|notes?|notebook|reminders?|remind|alarms?|timers?|to the|tables?|hotels?|"
                               "tickets?|taxi|cab|restaurant|cancel|delete|remove)\\b");
    return other.find(plain).has_value();
}

/// "Add flight home on december 15 at 4 pm": what stands at an hour of a day, or on a date, is no item of a list.
Found enteringAt(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form("^(?:(?:please|can you|could you|kindly) )*(?:(?:put|pencil|book|mark) (?:me|us) "
                              "(?:down|in)(?: for)?|add|enter|"
                              "put in|put(?! "
                              "(?:the|my|our|it|that|this|them|off|back))|"
                              "(schedule|plan|arrange|pencil in|input|insert|mark down|set up|diarise)|set|create|slot "
                              "in|fix)(?: in)? (?=\\S)",
        Pattern::caseless);
    static const Pattern date("\\d(?:st|nd|rd|th)\\b|\\b(?:january|february|march|april|june|july|august|september|"
                              "october|november|december|jan|feb|mar|apr|jun|jul|aug|sept?|oct|nov|dec)\\b|\\d/\\d");
    const auto match = form.find(core);
    if (!match || isForOthers(plain))
        return std::nullopt;
    EventWords event = EventWords::read(core.substr(match->range.end), around);
    if ((event.isRepeatUnknown || !event.ruleEnd.empty()) && !event.title.empty()) // It is said what cannot be kept.
        return adding(std::move(event), false);
    static const Pattern weekdays(
        "\\bfrom (?:mon|tue|wed|thu|fri|sat|sun)[a-z]* to (?:mon|tue|wed|thu|fri|sat|sun)[a-z]*\\b");
    if (!event.start && event.isTimeUnclear && !event.title.empty() && weekdays.find(plain))
        return adding(std::move(event), false);
    if (!event.start || event.title.empty() || event.isPartOfDay)
        return std::nullopt;
    const bool isOfCalendar = !match->texts[0].empty();
    const auto moment = SpokenMoment::read(core, around);
    if (!event.start->allDay)
        return event.end || isOfCalendar || (moment && moment->namesDay) ? adding(std::move(event), false)
                                                                         : std::nullopt;
    const bool isOfDays = event.end || event.isWholeDay || (EventTitle::takesDays(event.title) && date.find(plain));
    return isOfCalendar || isOfDays ? adding(std::move(event), false) : std::nullopt;
}

/// "Mark december 24 as family day", "save the date june 20 for the reunion": the day stands in front.
Found marking(const std::string& core, const RuleSurroundings& around)
{
    static const std::string polite = "^(?:(?:please|can you|could you|kindly|just) )*";
    static const Pattern dayFirst(polite
            + "(?:(?:mark|block|reserve|keep)(?: (?:off|out|down))?(?: the (?:date|day))?|save the (?:date|day)) "
              "(?!for\\b)"
              "(?:on |from )?(.+?) (?:as|for|with) (?:an? |the |my |our )?(\\D.*)$",
        Pattern::caseless);
    static const Pattern inCalendar(polite
            + "(?:(?:(?:enter|put|add|write) (?:it )?(?:in|into|to|on) )?(?:(?:my|the|our) )?(?:calendar|diary|agenda|"
              "planner)(?: (?:add|entry|event|new|put))?\\s*[:-]|(?:mark|update) (?:my|the|our) "
              "(?:calend[ae]rs?|diary|planner)(?: for| with| that| as)?,?|save (?:the|this|that) date(?: for| "
              "of|:)?|"
              "(?:make (?:an? )?(?:note|entry)|note(?: down)?|write(?: down)?|jot(?: down)?|put(?: down)?)(?: it)? "
              "(?:in|into|on) (?:my|the|our) (?:calendar|diary|planner|agenda)(?: that| of| for| about|:)?) (.+)$",
        Pattern::caseless);
    if (const auto match = inCalendar.find(core)) {
        EventWords event = EventWords::read(match->texts[0], around);
        return event.title.empty() && !event.start ? std::nullopt : adding(std::move(event), false);
    }
    static const Pattern range("\\bto\\b|-|–");
    const auto match = dayFirst.find(core);
    if (!match)
        return std::nullopt;
    const std::string when = (range.find(match->texts[0]) ? "from " : "on ") + match->texts[0];
    if (!EventWords::read(when, around).title.empty()) // "Mark rent as paid on friday" is of no day.
        return std::nullopt;
    EventWords event = EventWords::read(match->texts[1] + " " + when, around);
    return event.start && !event.title.empty() ? adding(std::move(event), false) : std::nullopt;
}

/// "On friday at 6 I have a class, put yoga there": the time is named first, or last, and the title behind "put".
Found enteringThere(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(.*?)(?:^|[,;.] ?| and | so )(?:(?:please|can you|could you|so|and|just) )*(?:put|add|enter|"
        "write|pop|schedule|book) (?:in |down )?((?!(?:it|that|this|them|me)\\b)\\S.*?) "
        "(?:in there|in then|there|then|for then|at that time)\\b[,.;]?(.*)$",
        Pattern::caseless);
    constexpr std::size_t longestTitle = 6; ///< Words.
    const auto match = form.find(core);
    if (!match || CalendarWords::isOfOthers(CalendarWords::of(core).plain)
        || RequestWords(match->texts[1]).size() > longestTitle)
        return std::nullopt;
    const EventWords time = EventWords::read(trimmed(match->texts[0] + " " + trimmed(match->texts[2])), around);
    EventWords event = EventWords::read(match->texts[1], around);
    if (!time.start || event.start || event.isTimeUnclear || event.title.empty())
        return std::nullopt;
    event.start = time.start;
    event.end = time.end;
    event.minutes = time.minutes;
    event.repeat = time.repeat;
    event.isRepeatUnknown = time.isRepeatUnknown;
    event.isPartOfDay = time.isPartOfDay;
    return adding(std::move(event), false);
}

/// "I have a flight on the 28th at 11:40 pm, please note": told, and wished for.
Found noted(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^((?:i|we|there|my|our|the)\\b.+?)[,.;]? (?:(?:so|and|then) )*(?:(?:please|kindly|can you|"
        "could you) )+(?:note|add|log|save|put|enter|record|mark)(?: (?:it|that|this|down|in))*$",
        Pattern::caseless);
    static const Pattern sentences("\\. .*\\. ");
    const auto match = form.find(core);
    if (!match || sentences.find(match->texts[0])) // Which of them is the title, nobody can tell.
        return std::nullopt;
    EventWords event = EventWords::read(match->texts[0], around);
    return event.start && !event.title.empty() ? adding(std::move(event), false) : std::nullopt;
}

/// "Book the meeting room": nothing is sent anywhere.
Found bookingRoom(const std::string& plain)
{
    static const Pattern form(lead
        + "(?:book|reserve|get|order)(?: me| us)? (?:(?:the|an?|our|my|some) )?(?:(?:big|small|large|other) )?"
          "(?:(?:(?:meeting|conference|board|class|training|team|study) ?)room|room|desk|court|venue|hall|projector|"
          "company car|parking (?:space|spot))\\b");
    static const Pattern calendar("\\b" + CalendarWords::calendar + "\\b");
    if (!form.find(plain) || calendar.find(plain))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{"I cannot book rooms and the like: nothing is sent from here. I can only put it into your "
                        "calendar.",
            std::move(memory)};
    }};
}

/// "Create an event on friday and invite John": with John, and nothing is sent, which the reply says.
std::string withGuests(const std::string& said)
{
    static const Pattern invites(
        "^((?:(?:please|can you|could you) )*(?:add|schedule|create|set(?: up)?|book|plan|make|"
        "arrange|put|organi[sz]e) .+?),? and (?:also |then |please )*(?:invite|send (?:an? |out )?"
        "(?:invites?|invitations?) to) (.+)$",
        Pattern::caseless);
    static const Pattern with("\\bwith\\b", Pattern::caseless);
    const auto match = invites.find(said);
    if (!match)
        return said;
    return match->texts[0] + (with.find(match->texts[0]) ? " and " : " with ") + match->texts[1];
}

} // namespace

Found EventSetting::read(const std::string& said, const RuleSurroundings& around)
{
    if (!around.offers("add_event"))
        return std::nullopt;
    const std::string core = withGuests(said);
    const std::string plain = CalendarWords::of(core).plain;
    if (auto request = bookingRoom(plain))
        return request;
    if (auto request = makingWithReminder(core, around))
        return request;
    if (auto request = enteringThere(core, around))
        return request;
    if (auto request = birthday(core, plain, around))
        return request;
    if (auto request = attending(core, around))
        return request;
    if (auto request = EventBlocking::read(core, plain, around))
        return request;
    if (auto request = SeveralEvents::read(core, plain, around))
        return request;
    if (auto request = EventFragment::read(core, plain, around))
        return request;
    if (auto request = noted(core, around))
        return request;
    if (auto event = eventIn(core, plain, around))
        return adding(*std::move(event), false);
    if (auto request = entering(core, plain, around))
        return request;
    if (auto request = marking(core, around))
        return request;
    return enteringAt(core, plain, around);
}

Found EventSetting::readStatement(const std::string& core, const RuleSurroundings& around)
{
    constexpr std::size_t longestTitle = 8; ///< Words.
    static const Pattern spoken(
        "^(?!(?:i|we|you|he|she|they|it|there|this|that|what|who|how|why|when|where|which|is|are|was|do|does|did|can|"
        "could|will|would|should|please|no|yes|not|never|call|play|talk|speak|send|share|turn|open|close|tell|show|"
        "read|"
        "remind|wake|alarm|order|buy|get|text|email|write|remove|delete|cancel|take|stop|start|move|change|look|find|"
        "search|give|let|make|go|drive|switch|skip|say|ask|kill|clear|lock|dim|translate|my|if|because|alexa|siri)\\b)["
        "\\p{L}0-9]",
        Pattern::caseless);
    static const Pattern shared("^[\\p{L}'’ -]+ with \\p{L}", Pattern::caseless);
    static const Pattern wished(
        "^(?:please )?(?:(?:add|put|enter|insert|input|create|schedule|book|plan|arrange|make)(?: in)?|new) (?=\\S)",
        Pattern::caseless);
    static const Pattern bare("^(?:a |an )?new (?:event|appointment|meeting|calendar entry|entry)$", Pattern::caseless);
    if (!around.offers("add_event"))
        return std::nullopt;
    if (bare.find(core))
        return adding({}, false);
    const std::string plain = CalendarWords::of(core).plain;
    const auto wish = wished.find(core);
    if (!spoken.find(core) || isForOthers(plain))
        return std::nullopt;
    EventWords event = EventWords::read(wish ? core.substr(wish->range.end) : core, around);
    static const Pattern ended(
        "\\b(?:no|not|cancel\\w*|sick|ill|free|tell|what|when|where|how|was|were|had)\\b", Pattern::caseless);
    const bool isName = !event.title.empty() && RequestWords(event.title).size() <= longestTitle
        && !CalendarWords::holdsTimeWords(CalendarWords::of(event.title).plain) && !ended.find(event.title);
    if (!isName || event.isRepeatUnknown)
        return std::nullopt;
    if (wish && !event.start && (event.isTimeUnclear || event.isVague))
        return adding(std::move(event), false);
    const auto moment = SpokenMoment::read(core, around);
    const bool isAtHour =
        event.start && !event.start->allDay && (!event.repeat.empty() || (moment && moment->namesDay));
    // "Church on sundays": what comes back, and nothing that it could ask for.
    const bool isSeries = !event.repeat.empty() && EventTitle::namesOccasion(event.title);
    const bool isOfDay = (event.start || isSeries)
        && (wish || event.isWholeDay || shared.find(core) || EventTitle::takesDays(event.title)
            || EventTitle::namesOccasion(event.title));
    static const Pattern isEvent("^(?:an? |all[ -]day |new )*event\\b", Pattern::caseless);
    const bool isUnasked = !isEvent.find(core) && !event.isWholeDay;
    return (isAtHour || isOfDay) && !event.isTimeUnclear ? adding(std::move(event), isUnasked) : std::nullopt;
}

} // namespace quorvell
