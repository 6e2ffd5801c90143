// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventAsking.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/DayAsking.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/time/TimeVocabulary.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

const std::string questionWord("(?:when|what|where|who|whom|if|whether|how|which)");
const std::string ofThem("(?:" + CalendarWords::noun + "|" + CalendarWords::occasion + ")");

/// What is found of the words by name.
Found lookingFor(const std::string& subject, Aim aim, const std::string& core, const RuleSurroundings& around)
{
    auto search = CalendarWords::search(subject, around);
    if (!search || search->isUnclear)
        return std::nullopt;
    search->aim = aim;
    return EventLookup::request(*std::move(search), core);
}

/// "Does anything clash on friday?", "do I have conflicts this week": within some hours anything is one.
Found clashing(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern said("\\b(?:clash(?:es|ing)?|conflicts?|conflicting|overlap(?:s|ping)?|collide|coincide|"
                              "double book(?:ed|ing|ings)?|double-book(?:ed|ing|ings)?)\\b(?: with)?");
    static const Pattern asks(
        "^(?:(?:please|can you|could you|tell me|let me know|check|see|show me|find|look for|my|the|calendar|for|if|"
        "whether) )*(?:do|does|did|is|are|am|have|has|any|what|which|will|would|there|conflicts?|clashes|overlaps?|"
        "overlapping|conflicting)\\b");
    if (!said.find(plain) || !asks.find(plain) || CalendarWords::isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(said.replaceAll(plain, " "), around);
    if (!search || search->isUnclear)
        return std::nullopt;
    const bool isOfHours = search->days && !search->days->from.allDay;
    search->aim = isOfHours ? Aim::tell : Aim::clashes;
    search->isAll = search->isNext = false;
    search->noun.clear();
    return EventLookup::request(*std::move(search), core);
}

/// "Which meetings repeat", "how often is standup"
Found comingBack(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern often("^(?:and |so )?how often (?:do|does|is|are|will|am|have)(?: (?:i|we))?(?: (?:have|"
                               "go to|attend))? (.+?)(?: (?:happen|take place|come back|repeat|on|scheduled))*$");
    static const Pattern repeats("^(?:(?:please|tell me|show me|can you|could you|list|show|do|does|is|are|what|which|"
                                 "have|i|we|the|my|our|all|any|there|me) )*(.*?)\\b(?:repeat(?:s|ing|ed)?|recur(?:s|"
                                 "ring)?|regular|come back|comes back|weekly|daily)\\b(?!.*\\b(?:every|set|add|put)\\b)"
                                 "(.*)$");
    static const Pattern asks(
        "^(?:please |can you |could you )*(?:tell|show|list|do|does|is|are|what|which|have|any)\\b");
    const auto match = often.find(plain);
    const auto other = match || !asks.find(plain) ? std::nullopt : repeats.find(plain);
    if ((!match && !other) || CalendarWords::isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(match ? match->texts[0] : other->texts[0] + " " + other->texts[1], around);
    static const Pattern named("\\b" + ofThem + "\\b");
    if (!search || search->isUnclear || (other && !named.find(plain)) || (match && search->name.empty()))
        return std::nullopt;
    search->aim = Aim::repeats;
    search->noun = "";
    search->isAll = false;
    return EventLookup::request(*std::move(search), core);
}

/// "Details of the dentist appointment", "search my calendar for yoga"
Found detailed(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const std::string lead("^(?:(?:please|can you|could you|would you|i want|i need|i would like|to|give|show|"
                                  "tell|get|read|see|know|me|us|what are|what is|let me know|find|share) )*");
    static const Pattern details(lead
        + "(?:(?:the|all|more|full|some|further) )*(?:details?|info|information|particulars|specifics) (?:of|about|on|"
          "for|regarding) (.+)$");
    static const Pattern searching(lead
        + "(?:search|look|check|scan|browse|go)(?: (?:in|into|through|on|up|at))?(?: (?:my|the|our))? "
        + CalendarWords::calendar
        + " (?:for|about|to see|to find|if|whether)(?: (?:there is|i have|any|an?|the))* (.+)$");
    static const Pattern thing("\\b" + ofThem + "\\b");
    if (const auto match = searching.find(plain))
        return lookingFor(match->texts[0], Aim::tell, core, around);
    const auto match = details.find(plain);
    const bool isEvent = match && thing.find(match->texts[0]) && !CalendarWords::isOfOthers(plain);
    return isEvent ? lookingFor(match->texts[0], Aim::ends, core, around) : std::nullopt;
}

/// "What do I have with John", "any plans with Ana this week"
Found withPerson(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|tell me|show me|show|list|find|let me "
        "know|and|so|is|are|there|do|does|did|have|"
        "has|am|i|we|what|which|all|if|got|my|the|any|other) )*(?:anything|something|everything|things?|stuff|plans?|"
        "have|doing|planned|scheduled|going on|"
        + CalendarWords::noun
        + ")(?: (?:do|i|we|have|has|got|is|are|planned|scheduled|on|coming up|there|in|my|calendar|set|booked))* "
          "(?:with|involving|including) (?!me\\b|us\\b|you\\b|it\\b|that\\b|this\\b|them\\b)([a-z].*?)(?: in it)?$");
    static const Pattern wishes("^(?:i|we) (?:have|am|are|got)\\b");
    const auto match = form.find(plain);
    if (!match || wishes.find(plain) || CalendarWords::isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search("with " + match->texts[0], around);
    if (!search || search->isUnclear || search->name.empty())
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

/// "Do I have time for a coffee tomorrow?"
Found timeFor(const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|tell me|check|and|so|if|whether|let me know) )*(?:do|will|would|have|is|are|"
        "can) (?:i|we|there)(?: (?:have|be|got|get|still|any|enough|some|find))* (?:time|room|space|"
        "a (?:moment|minute|window|spare (?:hour|moment)))(?: left)? (?:for|to)\\b (.+)$");
    static const Pattern fits(
        "^(?:(?:please|tell me|check|and|so) )*(?:can|could) (?:i|we) (?:fit|squeeze)(?: in)? (.+)$");
    auto match = form.find(plain);
    if (!match)
        match = fits.find(plain);
    if (!match)
        return std::nullopt;
    constexpr int usualMinutes = 60;
    std::string others;
    auto days = SpokenDays::findMoment(match->texts[0], around, others);
    if (days)
        days->to = days->from.adding(usualMinutes);
    else
        days = SpokenDays::find(match->texts[0], around, others);
    return DayAsking::freeTime(std::move(days));
}

/// "Did I miss anything yesterday?"
Found missed(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form("^(?:(?:and|so|what|which) )*(?:did|have|has) (?:i|we) (?:miss|missed|skip|skipped)(?: "
                              "(?:any|some|all|my|a|the))*(?: (?:thing|anything|something|things|"
        + CalendarWords::noun + "|" + CalendarWords::calendar + "))?(?: (.+))?$");
    const auto match = form.find(plain);
    if (!match)
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0].empty() ? "today" : match->texts[0], around);
    if (!search || !search->days || !search->name.empty())
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

/// "How many times do I have yoga this month?"
Found counted(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^how many times (?:do|will|am|is|are|have|does|did) (?:(?:i|we|have|got|go|going|to|attend|"
        "there|my|the|our) )*(.+?)(?: (?:scheduled|planned|on|happen(?:ing)?|take place))*$");
    const auto match = form.find(plain);
    auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    if (!search || search->name.empty() || search->isUnclear)
        return std::nullopt;
    search->aim = Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

} // namespace

std::string EventAsking::plainly(const std::string& plain)
{
    static const std::string day("(today|tomorrow|tonight|(?:this|next) (?:week|weekend|month)|(?:on |this |next )?"
        + std::string(TimeVocabulary::weekday) + "(?: (?:morning|afternoon|evening|night))?)");
    static const Pattern wondering(
        "^(?:(?:sorry|so|well|hmm|please|and|oh) )*(?:(?:i|we) (?:keep forgetting|forgot|forget|have "
        "forgotten|(?:am|are) "
        "not (?:quite )?sure|do not (?:know|remember|recall)|cannot (?:remember|recall)|can not (?:remember|recall)|"
        "wonder|(?:am|was|are|were) wondering|(?:need|want|would like|would love|must|wish|have|like) to (?:know|see|"
        "check|find out|hear))|any idea|do you (?:know|remember)|not sure|say|would you know)(?: again)? (?="
        + questionWord + "\\b)");
    static const Pattern dayFirst(
        "^" + day + " (any|what|how many|how much|is there|are there|do|does|am i|which|when|where|who) (.+)$");
    static const Pattern wordLast("^(?!(?:" + questionWord
        + "|remind|tell|set|add|put|let|ask|i|we|do|is|it|that|this)\\b)"
          "(?:my |the |our )?(.+?) (when|what time|at what time|where|on what day|what day|which day|what date|how "
          "long|who)"
          "(?: (?:is|was) (?:it|that))?$");
    static const Pattern nounLast("^(?:my |the |our )?((?:[a-z'’]+ ){0,2}" + ofThem
        + "(?: (?:with|on|at) [a-z ]+?)?) (time|timings?|date|day|location|place|venue|address|duration)$");
    static const Pattern ofDays(
        "^(?:my |the |our )*" + CalendarWords::calendar + "(?: (?:for|on|of|about))? " + day + "$");
    static const Pattern bare("^(?:my |the )?(?:schedule|timetable|itinerary)$");
    static const Pattern span(
        "^(?:today|(?:this|the) (?:week|weekend|month)|(?:the )?rest of (?:the|this) week|the week "
        "ahead)$");
    static const Pattern verb("^(?:add|put|set|create|make|book|plan|enter|move|change|delete|remove|cancel|clear)\\b");
    if (wondering.find(plain))
        return wondering.replaceAll(plain, "");
    if (const auto match = dayFirst.find(plain))
        return match->texts[1] + " " + match->texts[2] + " " + match->texts[0];
    if (verb.find(plain))
        return plain;
    if (const auto match = wordLast.find(plain))
        return match->texts[1] + " is " + match->texts[0];
    if (const auto match = nounLast.find(plain)) {
        static const Pattern place("^(?:location|place|venue|address)$");
        static const Pattern length("^duration$");
        return (place.find(match->texts[1])           ? "where is "
                       : length.find(match->texts[1]) ? "how long is "
                                                      : "when is ")
            + match->texts[0];
    }
    if (const auto match = ofDays.find(plain))
        return "what is on my calendar " + match->texts[0];
    if (bare.find(plain))
        return "what is on my calendar";
    return span.find(plain) ? "what is on my calendar " + plain : plain;
}

Found EventAsking::read(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    for (const auto reader : {clashing, comingBack, detailed, withPerson, missed, counted})
        if (auto request = reader(plain, core, around))
            return request;
    return timeFor(plain, around);
}

std::optional<EventSearch> EventAsking::ofUnknown(const std::string& question, const RuleSurroundings& around)
{
    static const Pattern when(
        "^(?:please |tell me |and |so )*(?:when|what time|at what time|what day|which day|how soon) "
        "(?:is|are|was|were|am|do|does|did|will|should|must)(?: (?:i|we|you))?\\b (.+)$");
    static const Pattern where("^(?:please |tell me |and |so )*where (?:is|are|am i|do i|does|will) (.+)$");
    static const Pattern whether("^(?:and |so )?(?:do|did|have|has|am|is|are|will|does) (?:i|we|my|our|the|there)"
                                 "(?: (?:have|got|already|still|any|an?|my|the|our))* (.+)$");
    static const Pattern what("^(?:and |so )?what (?:do|am|have|is) (?:i|we|there)\\b (.+)$");
    const std::string plain = CalendarWords::of(question).plain;
    const auto searchIn = [&](const Pattern& form, Aim aim) -> std::optional<EventSearch> {
        const auto match = form.find(plain);
        auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
        if (!search || search->isUnclear || EventName::words(search->name).empty())
            return std::nullopt;
        search->name = CalendarWords::asSaid(search->name, question);
        search->aim = aim;
        return search;
    };
    if (CalendarWords::isOfOthers(plain) || !around.offers("whats_on"))
        return std::nullopt;
    if (auto search = searchIn(when, Aim::when))
        return search;
    if (auto search = searchIn(where, Aim::where))
        return search;
    if (auto search = searchIn(whether, Aim::confirm))
        return search;
    return searchIn(what, Aim::tell);
}

} // namespace quorvell
