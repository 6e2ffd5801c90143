// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventFragment.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

const std::string fragmentLead =
    "^(?:(?:please|can you|could you|would you|i want to|i would like to|i need to|kindly|just|for|me|hey|help me|let "
    "us|to|and) )*";
const std::string anything = "(?:(?:an?|the|my|this|that|new|another|some|one|calendar) )*";

/// A name alone may be what was asked for.
Request orAnswer(Request request)
{
    request.mayAnswer = [](const PendingQuestion&, const RuleSurroundings&) { return true; };
    return request;
}

Found newEvent(EventWords event)
{
    return AgendaRules::request(AgendaIntent::ofNew(std::move(event)));
}

/// "Add to calendar", "schedule something", "set event": neither what nor when.
Found addingSomething(const std::string& plain)
{
    static const std::string verb =
        "(?:add|set(?: up)?|create|make|schedule|book|plan|arrange|put|enter|insert|input|new|"
        "start|save|write|note|mark|update|include|fix)(?: in| down)?";
    static const Pattern form(fragmentLead + verb + " " + anything
        + "(?:event|events|entry|calendar entry|something|anything|a thing|things|stuff|item|it|date)?"
          "(?: ?(?:(?:in|into|to|on|onto|in to|for) )?"
        + anything + "(?:" + CalendarWords::calendar + ")(?: (?:event|entry|app))?)?$");
    static const Pattern bareVerb(
        "^(?:schedule|new event|new entry|new appointment|calendar event|calendar entry|create|"
        "event add|events? new)$");
    static const Pattern named(
        "\\b(?:event|events|entry|something|anything|thing|things|stuff|date|" + CalendarWords::calendar + ")\\b");
    static const Pattern looksUp("^(?:(?:please|just) )*(?:(?:update|save) (?:my|the|our) |make (?:the|my) )");
    static const Pattern pointed("\\b(?:it|that|this|them)\\b");
    const bool isBare = bareVerb.find(plain) && plain != "create";
    if (!isBare && (!form.find(plain) || !named.find(plain) || looksUp.find(plain) || pointed.find(plain)))
        return std::nullopt;
    return newEvent({});
}

/// "Set event on recurring", "create a repeating event": what comes back, they have to say.
Found comingBackFragment(const std::string& plain)
{
    static const std::string often = "(?:recurring|repeating|repeated|recurrent|regular)";
    static const Pattern form(fragmentLead + "(?:(?:add|set(?: up)?|create|make|schedule|put|turn|new|need|want) )?(?:"
        + anything + often + " " + anything + "(?:event|events|meeting|appointment|entry|schedule)?|" + anything
        + "(?:event|events|entry) (?:(?:on|as|to|to be|is|for|that is|which is|in) )*(?:an? )?(?:" + often
        + "|repeat|recur)(?: (?:event|mode|basis))?)$");
    if (!form.find(plain))
        return std::nullopt;
    EventWords event;
    event.isToRepeat = true;
    return newEvent(std::move(event));
}

/// "Edit event", "move the meeting": which one, and how.
Found changingSome(const std::string& plain)
{
    static const Pattern form(fragmentLead
        + "(?:edit|change|modify|update|move|reschedule|alter|adjust|amend|correct|fix|postpone|shift) " + anything
        + "(?:(?:event|events|appointment|appointments|entry|meetings|calendar|schedule|calendar event|calendar entry|"
          "details?)|(?:event|meeting|appointment) (?:time|date|details?|name|title|location))"
          "(?: (?:time|date|details?|name|title|in|on|of|my|the|event|calendar))*$");
    static const Pattern fix("\\bfix (?:an?|my) |\\bupdate (?:my|the|our) (?:calendar|schedule|agenda)$");
    if (!form.find(plain) || fix.find(plain))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{"Which event should I change, and how? For example: move lunch with Ana to saturday at 2. Or: "
                        "rename it to brunch.",
            std::move(memory)};
    }};
}

/// "Meeting", "my appointments": what there is of them is told.
Found nounAlone(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form("^(?:(?:my|the|our|next|upcoming|calendar|any|all) )*(meetings?|appointments?|events?|"
                              "birthdays?|anniversar(?:y|ies)|engagements?|commitments?)(?: please)?$");
    static const Pattern occasion(
        "^(?:(?:my|the|our) "
        ")?(?:lunch|dinner|breakfast|brunch|party|interview|yoga|gym|dentist|doctor|standup|class)$");
    const bool isOccasion = occasion.find(plain).has_value();
    auto search = isOccasion || form.find(plain) ? CalendarWords::search(plain, around) : std::nullopt;
    if (!search)
        return std::nullopt;
    search->aim = isOccasion ? EventSearch::Aim::when : EventSearch::Aim::tell;
    search->isAll = search->isAll && !isOccasion;
    return orAnswer(EventLookup::request(*std::move(search), core));
}

/// "Schedule friday", "today's agenda": what there is that day.
Found dayAlone(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const std::string matter = "(?:schedule|calendar|agenda|diary|planner|events|meetings|appointments|plans)";
    static const Pattern first("^(?:(?:my|the|our) )?" + matter + " (?:for |on |of )?(.+)$");
    static const Pattern last("^(.+?) " + matter + "$");
    auto match = first.find(plain);
    if (!match)
        match = last.find(plain);
    auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    static const Pattern pointed("\\b(?:it|that|them|those|something)\\b"); // "Schedule it for noon" is a wish.
    const bool isOfDays = search && search->days && search->days->from.allDay;
    if (!isOfDays || !search->name.empty() || !search->noun.empty() || search->isUnclear || pointed.find(plain))
        return std::nullopt;
    search->aim = EventSearch::Aim::tell;
    return EventLookup::request(*std::move(search), core);
}

/// "Meeting with boss", "doctor appointment": neither a verb nor a day, so that it may be wished for or asked about.
Found nameAlone(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern with(
        "^(?:an? |my |the |our )?(?:[a-z'’-]+ ){0,3}(?:meeting|appointment|lunch|dinner|brunch|breakfast|call|session|"
        "interview|party|date|coffee|drinks)(?: with [a-z'’. -]{2,40})?$");
    // What begins with a verb, or tells what became of it, is for others to read.
    static const Pattern said(
        "^(?:accept|add|adjust|after|alter|amend|any|arrange|ask|attend|before|begin|block|book|bring|call|can|cancel|"
        "change|check|clear|confirm|cook|copy|correct|could|create|decline|delay|delete|did|discard|do|does|drop|"
        "duplicate|edit|email|end|enter|erase|every|extend|find|first|fix|forget|get|give|go|going|have|hold|host|how|"
        "i|"
        "insert|is|it|join|keep|kill|last|leave|let|list|log|look|make|mark|miss|modify|move|need|next|no|not|note|"
        "open|"
        "order|organi[sz]e|phone|plan|play|please|postpone|prepare|print|push|put|read|record|reject|remember|remind|"
        "remove|rename|repeat|reply|reschedule|save|schedule|scratch|search|second|see|send|set|share|shift|shorten|"
        "show|"
        "skip|start|stop|swap|take|tell|text|thanks|that|this|turn|up|update|video|view|void|want|we|what|when|where|"
        "who|"
        "wipe|write|yes|are)\\b|\\b(?:is|are|was|were|has|have|been|got|will|and|or|name)\\b");
    static const Pattern bare("^(?:an? |my |the |our )?(?:lunch|dinner|brunch|breakfast|call|session|party|date|coffee|"
                              "drinks|interview)$");
    if (!with.find(plain) || said.find(plain) || bare.find(plain) || CalendarWords::isOfOthers(plain)
        || plain.find(' ') == std::string::npos)
        return std::nullopt;
    auto search = CalendarWords::search(plain, around);
    if (!search || search->days || search->isUnclear || search->name.empty())
        return std::nullopt;
    search->aim = EventSearch::Aim::when;
    search->isAll = false;
    search->fallback = core; // Offered where it is not there.
    return orAnswer(EventLookup::request(*std::move(search), core));
}

/// "Add [event name] on [date]": a form that nobody filled in.
Found emptyForm(const std::string& core)
{
    static const Pattern field("[\\[({<][^\\])}>:=]*[\\])}>]");
    static const Pattern words("^(?:(?:please|can|you|add|set|put|create|make|schedule|new|an?|the|my|event|meeting|"
                               "appointment|called|named|titled|at|on|in|for|from|to|with|and|into|calendar|reminder)"
                               "\\s*)*[.,!]*$",
        Pattern::caseless);
    static const Pattern forms("\\b(?:event|meeting|appointment|calendar)\\b", Pattern::caseless);
    static const Pattern blanks("\\s{2,}");
    const std::string rest = trimmed(blanks.replaceAll(field.replaceAll(core, " "), " "));
    const bool isForm = rest != core && forms.find(core) && words.find(rest) && !rest.ends_with("reminder");
    return isForm && core.find_first_of("[({<") != std::string::npos ? newEvent({}) : std::nullopt;
}

/// "Modify the lunch event": to when, is asked.
Found changingNamed(const std::string& plain)
{
    static const Pattern form(
        fragmentLead + "(?:edit|modify|update|alter|adjust|amend) (?:the|my|our) (.+?)(?: event)?$");
    static const Pattern other("\\b(?:to|at|on|for|with the|as|list|note|reminder|alarm|calendar|schedule)\\b");
    const auto match = form.find(plain);
    if (!match || other.find(match->texts[0]) || !EventTitle::namesOccasion(match->texts[0]))
        return std::nullopt;
    return AgendaRules::request({.kind = AgendaIntent::Kind::move, .title = match->texts[0]});
}

/// "I have a doctor's appointment", "schedule dentist": when, is asked.
Found namedOnly(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern told(
        "^(?:i|we) (?:have|have got|got|am having|will have|need) (?:an? |my |the |another )?(\\S.*)$");
    static const Pattern wished(fragmentLead + "(?:schedule|book|plan|arrange|set up|fix) (?:an? |my |the )?(\\S.*)$");
    static const Pattern others(
        "\\b(?:flight|trip|show|movie|play|delivery|inspection|pickup|test|game|match|date|call|"
        "table|ticket|hotel|taxi|cab|room|reminder|alarm|to|not|no|question|problem)s?\\b");
    constexpr std::size_t longestName = 5; ///< Words.
    const auto owned = told.find(plain);
    const auto match = owned ? owned : wished.find(plain);
    if (!match || others.find(match->texts[0]) || !EventTitle::namesOccasion(match->texts[0])
        || RequestWords(match->texts[0]).size() > longestName)
        return std::nullopt;
    EventWords event = EventWords::read(CalendarWords::asSaid(match->texts[0], core), around);
    if (event.start || event.isTimeUnclear || event.isVague || !event.repeat.empty() || event.title.empty())
        return std::nullopt;
    AgendaIntent intent = AgendaIntent::ofNew(std::move(event));
    intent.isUnasked = owned.has_value();
    return AgendaRules::request(std::move(intent));
}

/// "Set up notifications for events": of one at a time.
Found noticesOfAll(const std::string& plain)
{
    static const Pattern form(
        "\\b(?:notif\\w+|reminders?|remind me|alerts?)(?: me)? (?:for|of|about|on) (?:(?:all|any|my|the|"
        "our|upcoming|future|calendar|every) )*(?:events?|meetings|appointments)$|\\b(?:notif\\w+|"
        "reminders?|remind|alert|tell|warn)\\b.* before (?:every|each|all|any)\\b.*\\b(?:"
        + CalendarWords::noun + "|class|call)");
    static const Pattern removes("\\b(?:delete|remove|cancel|off|stop|clear|what|which|show|list|do i|any)\\b");
    static const Pattern one("\\b(?:for|of|about|on) (?:(?:my|the|our|this|that|an?) )?event$");
    if (!form.find(plain) || removes.find(plain) || one.find(plain))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{
            "I remind you of one event at a time. Which one? For example: remind me half an hour before the "
            "dentist.",
            std::move(memory)};
    }};
}

/// "Add birthday": whose, and when.
Found addingKind(const std::string& plain)
{
    static const Pattern form(fragmentLead + "(?:add|set|enter|put|save|new|insert|create) " + anything
        + "(birthday|anniversary|holiday|vacation|party|conference|interview)s?(?: (?:in|to|into|on) " + anything
        + "(?:" + CalendarWords::calendar + "))?$");
    const auto match = form.find(plain);
    if (!match)
        return std::nullopt;
    EventWords event;
    event.title = withUpperCaseFirst(match->texts[0]);
    return newEvent(std::move(event));
}

} // namespace

Found EventFragment::read(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 80; ///< Bytes; more is no fragment.
    if (core.size() > longest)
        return std::nullopt;
    if (auto request = emptyForm(core))
        return request;
    for (const auto reader :
        {addingSomething, comingBackFragment, changingSome, addingKind, changingNamed, noticesOfAll})
        if (auto request = reader(plain))
            return request;
    if (auto request = nounAlone(core, plain, around))
        return request;
    if (auto request = dayAlone(core, plain, around))
        return request;
    if (auto request = namedOnly(core, plain, around))
        return request;
    return nameAlone(core, plain, around);
}

} // namespace quorvell
