// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventAsking.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/DayAsking.h"
#include "Understanding/skills/calendar/EventWording.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventName.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

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
    // "Does yoga clash with anything", "does anything clash with yoga": one of both is named.
    const auto middle = said.find(plain);
    auto search = CalendarWords::search(plain.substr(0, middle->range.start), around);
    if (!search || search->name.empty())
        search =
            CalendarWords::search(plain.substr(0, middle->range.start) + " " + plain.substr(middle->range.end), around);
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
    static const Pattern often("^(?:and |so )?(?:how often|(?:what|which|on which|on what) days) "
                               "(?:do|does|is|are|will|am|have)(?: (?:i|we))?(?: (?:have|"
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
    static const Pattern howMuch(
        "^how much (?:free |spare |open )?time (?:do (?:i|we) have|have (?:i|we) got|is (?:there|left))(?: "
        "(?:left|free|for me))* (.+)$");
    static const Pattern idle(
        "^(?:and |so )?(?:am|are) (?:i|we) (?:open|off|unbooked|not busy|idle) ((?:on|at|this|next|today|"
        "tomorrow|tonight|for|in|after|before|between|from|mon|tues|wednes|thurs|fri|satur|sun).*)$");
    static const Pattern out(
        "^(?:can|could) (?:i|we) (?:go out|do something|make plans|hang out|meet (?:someone|somebody|people|"
        "friends|up)|schedule (?:something|anything)|plan (?:something|anything)|sleep in) (.+)$");
    std::optional<PatternMatch> match;
    for (const Pattern* asked : {&form, &fits, &howMuch, &idle, &out})
        match = match ? match : asked->find(plain);
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

/// "Dentist appointment", "dinner with John": a name alone, told of where there is such a thing.
Found namedAlone(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:my|the|our) )?((?:(?!(?:new|a|an|no|to|and|or|add|set|do|have|had|book|need|want|next|last|first|"
        "all|any|set|create|make|edit|plan|call)\\b)[a-z'’]+ ){0,2}"
        + ofThem + "(?: (?:with|at) [a-z'’]+(?: [a-z'’]+)?)?)$");
    static const Pattern bareNoun("^(?:(?:my|the|our) )?(?:" + CalendarWords::noun
        + "|birthday|calls?|visit|date|coffee|drinks|"
          "sessions?|practice|exam|lecture|trip|flight|game|training|part(?:y|ies))$");
    static const Pattern verb(
        "^(?:add|put|set|create|make|book|plan|enter|move|change|delete|remove|cancel|clear|remind|note|"
        "skip|call|invite|schedule|i|we|it|is|not|play|buy|get|organi[sz]e|arrange|host|attend|join|"
        "start|stop|open|close|edit|update|save|wash|cook|make|eat|have|find)\\b");
    const auto match = form.find(plain);
    if (!match || bareNoun.find(plain) || verb.find(plain))
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0], around);
    if (!search || search->name.empty() || search->days || search->isUnclear || search->isNext || search->isAll)
        return std::nullopt;
    search->aim = Aim::when;
    search->otherwise = "I found no " + search->name + " in your calendar.";
    return EventLookup::request(*std::move(search), core);
}

} // namespace

Found EventAsking::read(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    for (const auto reader : {clashing, comingBack, detailed, withPerson, missed, counted, namedAlone})
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
    static const Pattern about(
        "^(?:please |can you |could you )*(?:tell|show|remind|give) me (?:more |something |all )?about (.+)$");
    static const Pattern happens(
        "^(?:and |so )?does (?!it\\b|that\\b|this\\b|he\\b|she\\b|they\\b|any)(.+?) (?:happen|take place|"
        "fall|start|begin)(?: (.+))?$");
    static const Pattern what("^(?:and |so )?what (?:do|am|have|is) (?:i|we|there)\\b (.+)$");
    const std::string plain = EventWording::asked(CalendarWords::of(question).plain);
    const auto searchIn = [&](const Pattern& form, Aim aim) -> std::optional<EventSearch> {
        const auto match = form.find(plain);
        const std::string behind = match && match->texts.size() > 1 ? " " + match->texts[1] : "";
        auto search = match ? CalendarWords::search(match->texts[0] + behind, around) : std::nullopt;
        const bool isOfDays = search && aim == Aim::tell && search->name.empty() && search->days;
        if (!search || search->isUnclear || (EventName::words(search->name).empty() && !isOfDays))
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
    if (auto search = searchIn(happens, Aim::confirm))
        return search;
    if (auto search = searchIn(about, Aim::ends))
        return search;
    return searchIn(what, Aim::tell);
}

} // namespace quorvell
