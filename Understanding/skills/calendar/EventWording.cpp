// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventWording.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/time/TimeVocabulary.h"

#include <deque>
#include <string_view>

namespace quorvell {

namespace {

const std::string question("(?:when|what|where|who|whom|if|whether|how|which)");
const std::string named("(?:" + CalendarWords::noun + "|" + CalendarWords::occasion + ")");
const std::string days("((?:on |for |of |at )?(?:today|tomorrow|tonight|(?:this|next|the) (?:week|weekend|month|day)|"
                       "(?:this |next )?"
    + std::string(TimeVocabulary::weekday)
    + "(?: (?:morning|afternoon|evening|night))?|(?:the )?\\d{1,2}(?:st|nd|rd|th)?(?:[/.]\\d{1,2}\\.?| (?:of "
      ")?(?:january|"
      "february|march|april|may|june|july|august|september|october|november|december))?))");

/// One way to ask, and the way it is read: "{1}" stands for what the first group took.
struct Wording {
    Wording(const std::string& pattern, std::string_view words)
        : form(pattern)
        , meant(words)
    {
    }

    Pattern form;
    std::string_view meant;
};

const std::deque<Wording>& wordings()
{
    static const std::deque<Wording> rows = [] {
        std::deque<Wording> all;
        const auto add = [&](const std::string& form, std::string_view meant) {
            all.emplace_back("^" + form + "$", meant);
        };
        add("(?:(?:sorry|so|well|hmm|please|and|oh) )*(?:(?:i|we) (?:keep forgetting|forgot|forget|have "
            "forgotten|(?:am|are) "
            "not (?:quite )?sure|do not (?:know|remember|recall)|cannot (?:remember|recall)|can not "
            "(?:remember|recall)|"
            "wonder|(?:am|was|are|were) wondering|(?:need|want|would like|would love|must|wish|have|like) to "
            "(?:know|see|"
            "check|find out|hear))|any idea|do you (?:know|remember)|not sure|say|would you know)(?: again)? ("
                + question + "\\b.*)",
            "{1}");
        add("(?:please )?(?:check|see|tell me|find out|verify|let me know|confirm) (?:if|whether) any ([a-z]+) "
            "(?:is|are)(?: there)? "
            "(.+)",
            "is there any {1} {2}");
        add(days + " (any|what|how many|how much|is there|are there|do|does|am i|which|when|where|who) (.+)",
            "{2} {3} {1}");
        add("whats? (?:is )?up(?: with)? " + days, "what is on my calendar {1}");
        add("(?:what is|is anything) (?:cooking|new|going down|the plan|the deal|in store)(?: for)? " + days,
            "what is on my calendar {1}");
        add("how (?:packed|full|hectic|crowded|bad|tight) (?:is|are|does) (?:my |the )?(.+?)(?: look(?:ing)?)?",
            "is {1} busy");
        add("(?:please )?(?:brief|update|fill)(?: me)?(?: in)? (?:on|about) (?:my )?" + days,
            "what is on my calendar {1}");
        add("(?:which|what)(?: is)?(?: the| my)?(?: day)?.*\\b(?:busiest|emptiest|freest|least busy|most busy|most "
            "free|lightest|"
            "fullest|quietest)\\b.*(next week|this month|next month)?.*",
            "what is on my calendar this week");
        add("(?:when|what time|at what time) (?:does|do|will|is) (?:my|the) (?:work ?)?day "
            "(?:start|begin|starting)(.*)",
            "what is my first event{1}");
        add("(?:when|what time|at what time) (?:does|do|will|is) (?:my|the) (?:work ?)?day "
            "(?:end|finish|over|ending)(.*)",
            "what is my last event{1}");
        add("(?:when|what time|at what time) (?:am|are|will) (?:i|we) (?:be )?(?:done|finished|through)(?: with "
            "(?:everything|"
            "work|meetings))?(.*)",
            "what is my last event{1}");
        add("(?:when|what time|at what time) (?:do|must|should|will) (?:i|we) (?:have to )?(?:start|begin)(?: work)? "
                + days,
            "what is my first event {1}");
        add("(?:my |the )?(first|last|second|third) (" + named + "|thing)(?: of)? " + days, "what is my {1} {2} {3}");
        add("(?:please )?(?:number|count|total)(?: of)? (?:(?:all|my|the) "
            ")*((?:events|meetings|appointments|things).*)",
            "how many {1}");
        add("(?:my )?(?:upcoming|coming up)(?: ones| stuff| things)?", "what are my upcoming events");
        add("(?:my |the )?((?:upcoming |future |calendar |scheduled |todays |tomorrows "
            ")*(?:events|meetings|appointments)) list",
            "list my {1}");
        add("(?:show |list |what are |tell me )*(?:my |the )*(?:past|previous|old|earlier) "
            "(?:events|meetings|appointments)",
            "what events did i have last month");
        add("(?:i|we) have (nothing|anything|something) (.+?),? (?:right|correct|or)", "do i have anything {2}");
        add("nothing (.+?) (?:right|correct)", "is there anything {1}");
        add("(?:i|we) have (.+?),? (?:right|correct|do not i|do i not|is not it|am i right)", "do i have {1}");
        add("((?:my|the|our) (?:[a-z'’]+ )*" + named + ") is (.+?),? (?:right|correct|is not it)", "is {1} {2}");
        add("who(?:m)? (?:am i|are we|do i|will i|will we) (?:going to )?(?:seeing|meeting|see|meet|visiting|visit) "
                + days,
            "what do i have {1}");
        add("(?:will|do|did|am|are) (?:i|we) (?:going to )?(?:meet|see|meeting|seeing|visit|visiting) (?:with "
            ")?([a-z].*)",
            "do i have anything with {1}");
        add("(?:please )?(?:address|location|place|venue) (?:of|for) (.*\\b" + named + "\\b.*)", "where is {1}");
        add("whose birthday is (.+)", "any birthdays {1}");
        add("(?!(?:" + question
                + "|remind|tell|set|add|put|let|ask|i|we|do|is|it|that|this|create|make|book|plan|move|change|"
                  "delete|remove|cancel|clear)\\b)(?:my |the |our )?(.+?) (when|what time|at what time|where|on what "
                  "day|what day|"
                  "which day|what date|how long|who)(?: (?:is|was) (?:it|that))?",
            "{2} is {1}");
        add("(?:my |the |our )*" + CalendarWords::calendar + "(?: about)? " + days, "what is on my calendar {1}");
        add("(?:my |the )?(?:schedule|timetable|itinerary)", "what is on my calendar");
        add("((?:today|(?:this|the|next) (?:week|weekend|month)|(?:the )?rest of (?:the|this) week|the week ahead))",
            "what is on my calendar {1}");
        return all;
    }();
    return rows;
}

std::string filled(std::string_view meant, const PatternMatch& match)
{
    std::string words(meant);
    for (std::size_t group = 0; group < match.texts.size(); ++group) {
        const std::string mark = "{" + std::to_string(group + 1) + "}";
        if (const std::size_t found = words.find(mark); found != std::string::npos)
            words.replace(found, mark.size(), match.texts[group]);
    }
    return trimmed(words);
}

/// "Meeting time", "dentist location"
std::string nounLast(const std::string& plain)
{
    static const Pattern form("^(?:my |the |our )?((?:[a-z'’]+ ){0,2}" + named
        + "(?: (?:with|on|at) [a-z ]+?)?) (time|timings?|date|day|location|place|venue|address|duration)$");
    static const Pattern place("^(?:location|place|venue|address)$");
    static const Pattern verb(
        "^(?:add|put|set|create|make|book|plan|enter|move|change|delete|remove|cancel|clear|remind)\\b");
    const auto match = verb.find(plain) ? std::nullopt : form.find(plain);
    if (!match)
        return plain;
    const std::string& what = match->texts[1];
    return (place.find(what) ? "where is " : what == "duration" ? "how long is " : "when is ") + match->texts[0];
}

} // namespace

std::string EventWording::asked(const std::string& plain)
{
    for (const auto& [form, meant] : wordings())
        if (const auto match = form.find(plain))
            return filled(meant, *match);
    return nounLast(plain);
}

} // namespace quorvell
