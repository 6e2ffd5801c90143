#include "LiveService/rules/AgendaIntent.h"

#include "LiveService/rules/RequestText.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = AgendaIntent::Kind;

constexpr auto caseless = Pattern::Case::insensitive;
constexpr int usualMinutes = 60;

std::string lastGroup(const PatternMatch& match)
{
    std::string last;
    for (const std::string& text : match.texts) {
        if (!text.empty())
            last = text;
    }
    return trimmed(last);
}

/// Whatever follows is a day, or nothing for today.
const auto& listPatterns()
{
    static const Pattern patterns[] = {
        Pattern("^what(?:'s|’s| is| else is)(?: there)? (?:on|happening|coming up|planned|scheduled|going on)"
                "(?: (?:in|on|for))?(?: my| the)?(?: (?:calendar|agenda|schedule|diary))?(?:\\s+(.+))?$",
            caseless),
        Pattern("^what(?:'s|’s| is)(?: on| in)? my (?:calendar|agenda|schedule|diary|day|plan)(?: like)?(?:\\s+(.+))?$",
            caseless),
        Pattern(
            "^what (?:do i have|i have|i've got|have i got|am i doing)(?: (?:planned|scheduled|going on|on|coming up))?"
            "(?: (?:in|on) my (?:calendar|agenda|schedule|diary))?(?:\\s+(.+))?$",
            caseless),
        Pattern("^(?:do i have|have i got|is there)(?: anything| something| any events?| any appointments?"
                "| any meetings?| plans)(?: (?:planned|scheduled|on|coming up))?"
                "(?: (?:in|on) my (?:calendar|agenda|schedule|diary))?(?:\\s+(.+))?$",
            caseless),
        Pattern("^(?:show|read|tell|give|open|list|check)(?: me)?(?: out)?(?: all)? (?:my|the)"
                " (?:calendar|agenda|schedule|diary|events|appointments|meetings|day|plans)(?:\\s+(.+))?$",
            caseless),
        Pattern("^(?:how|what) (?:does|do|is) my (?:(?:day|schedule|calendar|agenda|diary) look(?: like)?(?:\\s+(.+))?"
                "|(week|weekend|morning|afternoon|evening) look(?: like)?)$",
            caseless),
        Pattern("^(?:my|the) (?:calendar|agenda|schedule|diary)(?:\\s+(.+))?$", caseless),
        Pattern("^what am i up to(?:\\s+(.+))?$", caseless),
        Pattern("^what(?:'s|’s| is) my (week|weekend|morning|afternoon|evening) (?:like|looking like)$", caseless),
        Pattern("^(?:is there |have i got |do i have )?(?:anything|something) (?:(?:going "
                "on|happening|planned|scheduled) )?"
                "((?:on|for|in|this|next|today|tonight|tomorrow)\\b.*)$",
            caseless),
        Pattern("^(?:am i|will i be) busy(?:\\s+(.+))?$", caseless),
        Pattern(
            "^what (?:events|appointments|meetings|plans) (?:do i have|are there|have i got)(?:\\s+(.+))?$", caseless),
    };
    return patterns;
}

std::optional<AgendaIntent> readList(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern bare("^(?:week|weekend|morning|afternoon|evening)$", caseless);
    for (const Pattern& pattern : listPatterns()) {
        const auto match = pattern.find(core);
        if (!match)
            continue;
        std::string day = lastGroup(*match);
        if (bare.find(day))
            day = "this " + day;
        auto days = SpokenDays::read(day.empty() ? "today" : day, around);
        if (days)
            return AgendaIntent{.kind = Kind::list, .days = std::move(*days)};
    }
    return std::nullopt;
}

std::optional<AgendaIntent> readFindTime(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern patterns[] = {
        Pattern("^when (?:am i|will i be|could i be|are we) (?:free|available)(.*)$", caseless),
        Pattern("^when (?:(?:do|would|will|could|can) i (?:have|squeeze in|fit in|find|get)|have i got|is there)(?:(?: "
                "some| any| a)\\b)?(?: "
                "free)?(?: time| gap| slot)?(.*)$",
            caseless),
        Pattern("^(?:am i|will i be) (?:free|available)(.*)$", caseless),
        Pattern("^(?:have i got|do i have|is there) (?:any |some )?time(.*)$", caseless),
        Pattern("^(?:is|are) (.+) free$", caseless),
        Pattern("^(?:find|look for|search for|get|give)(?: me)?(?: some\\b| a\\b)?(?: free)? ?"
                "((?:(?:an? |one )?(?:free )?(?:hour|half hour|half an hour|\\S+ (?:minutes?|hours?)|\\S+ \\S+ minutes)"
                "|time|gap|slot)\\b.*)$",
            caseless),
        Pattern("^(?:do i have|have i got|is there)((?: an?| one| half an| \\S+)?(?: \\S+)? "
                "(?:hour|hours|minutes|time|gap|slot)"
                "\\b.*\\bfree\\b.*|(?: any| some| a)? free (?:time|hour|gap|slot)\\b.*)$",
            caseless),
    };
    static const Pattern filler(
        "\\b(?:free|available|time|gap|slot|long|hours?|in my (?:calendar|schedule|agenda|diary))\\b", caseless);
    static const Pattern blanks("\\s+");
    static const Pattern link("^(?:for|of|about|hour)\\s*$|\\s+(?:for|of|about)$|^(?:for|of|an?|about)\\s+", caseless);
    for (const Pattern& pattern : patterns) {
        const auto match = pattern.find(core);
        if (!match)
            continue;
        AgendaIntent intent{.kind = Kind::findTime, .minutes = usualMinutes};
        std::string rest = match->texts[0];
        if (const auto length = SpokenLength::read(rest)) {
            intent.minutes = length->minutes;
            rest = length->rest;
        }
        rest = trimmed(link.replaceAll(trimmed(blanks.replaceAll(filler.replaceAll(rest, ""), " ")), ""));
        const auto days = SpokenDays::read(rest, around);
        if (!rest.empty() && !days)
            return std::nullopt;
        if (days)
            intent.days = *days;
        return intent;
    }
    return std::nullopt;
}

/// "a free afternoon next week". A stretch that is free counts when it is most of that part of a day.
std::optional<AgendaIntent> readFreePart(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern free(
        "^(?:find|look for|search for|get|give|do i have|have i got|when do i have|is there)(?: me)? (?:an?|any) "
        "(?:free|empty|open) (morning|afternoon|evening|day)\\b(.*)$",
        caseless);
    constexpr int mostOfAPart = 3 * usualMinutes;
    constexpr int mostOfADay = 8 * usualMinutes;
    const auto match = free.find(core);
    if (!match)
        return std::nullopt;
    const bool isDay = match->texts[0] == "day";
    AgendaIntent intent{.kind = Kind::findTime, .minutes = isDay ? mostOfADay : mostOfAPart};
    const std::string when = trimmed(match->texts[1]);
    if (when.empty())
        return intent;
    auto days = SpokenDays::read(when, around);
    if (!days)
        return std::nullopt;
    if (!isDay && days->from == days->to)
        days = SpokenDays::read(when + " " + match->texts[0], around).value_or(*days);
    intent.days = std::move(*days);
    return intent;
}

/// "from 2 to 4 pm": becomes "at 2 pm", and the end apart.
std::string takeEnd(std::string& words)
{
    static const std::string clock =
        "((?:half past |quarter (?:past|to) )?(?:\\d{1,2}(?::\\d{2})?|one|two|three|four|five|six"
        "|seven|eight|nine|ten|eleven|twelve))(?: ?([ap]\\.?m\\.?))?";
    static const Pattern span("\\bfrom " + clock + " (?:to|till|until) " + clock, caseless);
    const auto match = span.find(words);
    if (!match)
        return {};
    const std::string half = match->texts[1].empty() ? match->texts[3] : match->texts[1];
    const std::string end = "at " + match->texts[2] + (match->texts[3].empty() ? "" : " " + match->texts[3]);
    words = words.substr(0, match->range.start) + "at " + match->texts[0] + (half.empty() ? "" : " " + half)
        + words.substr(match->range.end);
    return end;
}

/// The time of `end` on the day of `start`; nothing when it would not lie behind it.
std::string endOn(const std::string& start, const std::string& endWords, const RuleSurroundings& around)
{
    const auto end = SpokenMoment::read(endWords, around);
    if (!end || end->date.size() <= 10)
        return {};
    const std::string text = start.substr(0, 10) + end->date.substr(10);
    return text > start ? text : std::string();
}

std::string titleFrom(const std::string& words)
{
    static const Pattern edges(
        "^(?:(?:an?|the|my|for|called|named|about|with the title)\\s+)+|\\s+(?:for|on|at|in|from)$", caseless);
    return withUpperCaseFirst(trimmed(edges.replaceAll(trimmed(words, ",.:;\"“”"), "")));
}

std::optional<AgendaIntent> eventIn(std::string words, const RuleSurroundings& around)
{
    AgendaIntent intent{.kind = Kind::add};
    words = RequestText::withDigits(words);
    static const Pattern lasting(
        "\\b(?:for|lasting)\\s+(?=(?:an?|one|half|\\d+|three)\\b.*\\b(?:hours?|minutes?)\\b)", caseless);
    if (lasting.find(words)) {
        if (const auto length = SpokenLength::read(words)) {
            intent.minutes = length->minutes;
            words = length->rest;
        }
    }
    const std::string endWords = takeEnd(words);
    const auto moment = SpokenMoment::read(words, around);
    if (moment) {
        intent.start = moment->date;
        intent.end = endWords.empty() ? "" : endOn(moment->date, endWords, around);
    }
    intent.title = titleFrom(moment ? moment->rest : words);
    return intent;
}

std::optional<AgendaIntent> readAdd(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern ending(
        "^(?:put|add|enter|write|note|set|schedule|place|get|save)(?: down)?\\s+(.+?)\\s+"
        "(?:in|into|on|onto|to|down in) (?:my|the|our) (?:calendar|agenda|diary|schedule)\\b(.*)$",
        caseless);
    static const Pattern first(
        "^(?:in|on|to) (?:my|the) (?:calendar|agenda|diary),? (?:put|add|write)\\s+(.+)$", caseless);
    static const Pattern named(
        "^(?:add|put|create|make|schedule|set up|plan|enter|new|book)(?: me)?(?: an?| the)?(?: new)?"
        "(?: calendar)? (?:event|entry|calendar entry)\\b\\s*(?:called|named|for|about|:)?\\s*(.+)$",
        caseless);
    static const Pattern meeting(
        "^(?:add|create|make|set up|put in|enter)(?: me)?(?: an?| the| my)?(?: new)? ((?:\\S+ )?(?:meeting"
        "|appointment|lunch|dinner|breakfast|call|party|visit|date|interview|lesson|class)\\b.+)$",
        caseless);
    static const Pattern verb("^(?:schedule|plan)(?: me)?(?: in)? (.+)$", caseless);
    static const Pattern reminder("\\breminders?\\b|\\bnotes?\\b", caseless);
    static const Pattern told(
        "^(?:i(?:'ve|’ve| have)(?: got)?|there is|there's) (.+?),? (?:and )?(?:please )?(?:put|add|enter) (?:it|that)"
        " (?:in|into|on|to) (?:my|the) (?:calendar|agenda|diary|schedule)$",
        caseless);
    static const Pattern bookedIn("^(?:book|put|pencil) me (?:in|down) for (.+)$", caseless);
    static const Pattern pencilled("^(?:pencil in|block out) (.+)$", caseless);
    if (const auto match = told.find(core))
        return eventIn(match->texts[0], around);
    if (const auto match = bookedIn.find(core))
        return eventIn(match->texts[0], around);
    if (const auto match = ending.find(core))
        return eventIn(match->texts[0] + " " + match->texts[1], around);
    for (const Pattern* pattern : {&first, &named}) {
        if (const auto match = pattern->find(core))
            return eventIn(match->texts[0], around);
    }
    for (const Pattern* pattern : {&meeting, &verb, &pencilled}) {
        const auto match = pattern->find(core);
        if (!match || reminder.find(match->texts[0]))
            continue;
        auto intent = eventIn(match->texts[0], around);
        if (intent && !intent->start.empty())
            return intent;
    }
    return std::nullopt;
}

/// What names an event: "my lunch with Ana on friday". Its day, if one is named, says where to look.
AgendaIntent target(Kind kind, const std::string& words, const RuleSurroundings& around)
{
    static const Pattern ends("^(?:(?:my|the|our|that|this|an?)\\s+)+|\\s+(?:event|appointment|meeting)$"
                              "|\\s*\\b(?:from|in|on) (?:my|the) (?:calendar|agenda|diary|schedule)$",
        caseless);
    static const Pattern day(
        "\\b(?:on|of|from|for)?\\s*((?:today|tomorrow|tonight|(?:this |next )?(?:mon|tues|wednes|thurs|fri"
        "|satur|sun)day|this week|next week)(?:'s|’s)?(?: (?:morning|afternoon|evening))?)\\b",
        caseless);
    AgendaIntent intent{.kind = kind, .days = SpokenDays::ahead(around)};
    std::string name = ends.replaceAll(trimmed(words), "");
    if (const auto match = day.find(name)) {
        static const Pattern possessive("['’]s\\b");
        if (auto days = SpokenDays::read(possessive.replaceAll(match->texts[0], ""), around)) {
            intent.days = std::move(*days);
            name = trimmed(name.substr(0, match->range.start) + name.substr(match->range.end));
        }
    }
    intent.title = trimmed(ends.replaceAll(name, ""));
    return intent;
}

bool isNoEvent(const std::string& words)
{
    static const Pattern other("\\b(?:notes?|reminders?|files?|windows?|tabs?|e-?mails?|it|that|this|everything)$"
                               "|^(?:(?:my|the|that|this|a) )?(?:notes?|reminders?|files?|it|that|this)\\b",
        caseless);
    return other.find(words).has_value();
}

std::optional<AgendaIntent> readMove(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern to(
        "^(?:move|reschedule|shift|change|push|postpone|delay|bring forward|put off)(?: back| out)? (.+?)"
        " (?:to|until|till) (.+)$",
        caseless);
    static const Pattern by(
        "^(?:move|shift|push|postpone|delay|put off)(?: back)? (.+?) (?:(?:back )?by|back) (.+)$", caseless);
    static const Pattern later(
        "^(?:make|start|have) (.+?) ((?:an?|one|half|\\d+|\\w+)(?: an?)? (?:minutes?|hours?|days?)"
        "(?: and a half)?) later$",
        caseless);
    for (const Pattern* pattern : {&by, &later}) {
        const auto match = pattern->find(core);
        if (!match || isNoEvent(match->texts[0]))
            continue;
        const auto length = SpokenLength::read(match->texts[1]);
        if (!length)
            return std::nullopt;
        AgendaIntent intent = target(Kind::move, match->texts[0], around);
        intent.minutes = length->minutes;
        return intent;
    }
    static const Pattern anew("^(?:reschedule|rebook) (.+?) (?:for|on) (.+)$", caseless);
    auto match = to.find(core);
    if (!match)
        match = anew.find(core);
    if (!match || isNoEvent(match->texts[0]))
        return std::nullopt;
    static const Pattern bare("^\\d{1,2}(?::\\d{2})?$|^(?:half|quarter) ", caseless);
    std::string when = RequestText::withDigits(match->texts[1]);
    when = bare.find(when) ? "at " + when : when;
    if (!SpokenMoment::read(when, around))
        return std::nullopt;
    AgendaIntent intent = target(Kind::move, match->texts[0], around);
    intent.when = std::move(when);
    return intent;
}

std::optional<AgendaIntent> readCancel(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern cancel(
        "^(?:delete|cancel|remove|call off|drop|scratch|take) (.+?)(?: off my (?:calendar|agenda))?$", caseless);
    const auto match = cancel.find(core);
    if (!match || isNoEvent(match->texts[0])
        || (core.starts_with("take") && core.find(" off my ") == std::string::npos))
        return std::nullopt;
    AgendaIntent intent = target(Kind::cancel, match->texts[0], around);
    return intent.title.empty() ? std::nullopt : std::optional(std::move(intent));
}

} // namespace

std::optional<AgendaIntent> AgendaIntent::read(std::string_view words, const RuleSurroundings& around)
{
    const std::string core(words);
    for (const auto reader : {readFreePart, readFindTime, readList, readAdd, readMove, readCancel}) {
        if (auto intent = reader(core, around))
            return intent;
    }
    return std::nullopt;
}

} // namespace quorvell
