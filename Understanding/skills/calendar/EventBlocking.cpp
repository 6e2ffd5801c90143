// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventBlocking.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/time/SpokenMoment.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

/// "Block two hours tomorrow", "block my calendar for friday from 2 to 4": what for, they need not say.
Found blocking(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|kindly|just) )*(?:block|reserve|set aside|keep|hold|free "
        "up|mark)(?: (?:out|off|up))? (?=\\S)",
        Pattern::caseless);
    static const Pattern free(
        "\\b(?:free|clear|open|blocked|busy|unavailable)(?= |$)(?! (?:time|slot|lunch|entry))", Pattern::caseless);
    static const Pattern needsFree("^(?:(?:please|can you|could you|kindly|just) )*(?:keep|free up|mark)\\b");
    static const Pattern calendar(
        "\\b(?:(?:in|on) )?(?:my|the|our) (?:calendar|diary|agenda|schedule|planner|time)\\b", Pattern::caseless);
    static const Pattern filler("^(?:(?:some|the|my|of|time|an?|for|off|out|it|from|on|as|whole|entire|please|day|date|"
                                "week|weekend|month|this|next)\\s*)+(?=\\s|$)",
        Pattern::caseless);
    static const Pattern reason(
        ",? (?:nobody|no one|so that|because|since|as i|i need|do not let)\\b.*$", Pattern::caseless);
    static const Pattern others(
        "\\b(?:number|caller|sites?|websites?|ads?|notifications?|tables?|rooms?|seats?|tickets?|"
        "hotels?|reminders?|alarms?|lists?|notes?|save the date)\\b");
    static const Pattern asWhat(" (?:as|with) (?!(?:blocked|busy|free|unavailable)\\b)\\S");
    const auto match = form.find(plain) ? form.find(core) : std::nullopt;
    if (!match || others.find(plain) || (needsFree.find(plain) && !free.find(plain)) || asWhat.find(plain))
        return std::nullopt;
    std::string words = reason.replaceAll(core.substr(match->range.end), "");
    words = trimmed(calendar.replaceAll(free.replaceAll(words, ""), ""));
    EventWords event = EventWords::read("for " + words, around);
    static const Pattern span("\\b(?:week|weekend|month)\\b");
    if (!event.start && !event.isTimeUnclear && !event.isVague && event.minutes == 0 && !span.find(plain))
        return std::nullopt;
    event.title = withUpperCaseFirst(trimmed(filler.replaceAll(event.title, "")));
    if (event.title.empty())
        event.title = "Busy";
    return AgendaRules::request(AgendaIntent::ofNew(std::move(event)));
}

/// "I'm busy tomorrow from 2 to 4", "I am off on friday": told, so that it is asked first.
Found away(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:i am|i['’]m|i will be|i['’]ll be|we are|we['’]re|we will be) (?:going to be "
        ")?(busy|off|away|unavailable|out of "
        "town|out of (?:the )?office|on (?:vacation|holiday|leave)|travell?ing|not available|occupied) (.+)$",
        Pattern::caseless);
    static const Pattern question("^(?:am|are|is|will|when|if)\\b");
    static const Pattern put("^on ", Pattern::caseless);
    const auto match = question.find(plain) ? std::nullopt : form.find(core);
    if (!match)
        return std::nullopt;
    EventWords event = EventWords::read(match->texts[1], around);
    if (!event.start || !event.title.empty())
        return std::nullopt;
    event.title = withUpperCaseFirst(put.replaceAll(match->texts[0], ""));
    event.isWholeDay = event.start->allDay && !event.isPartOfDay;
    AgendaIntent intent = AgendaIntent::ofNew(std::move(event));
    intent.isUnasked = true;
    return AgendaRules::request(std::move(intent));
}

} // namespace

Found EventBlocking::read(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    if (auto request = blocking(core, plain, around))
        return request;
    return away(core, plain, around);
}

} // namespace quorvell
