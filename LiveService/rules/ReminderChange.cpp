#include "LiveService/rules/ReminderChange.h"

#include "LiveService/rules/RequestText.h"
#include "QuorvellCore/reminders/ReminderPhrase.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

namespace {

using Kind = ReminderChange::Kind;

constexpr auto caseless = Pattern::Case::insensitive;

std::string withoutArticle(const std::string& words)
{
    static const Pattern article("^(?:(?:to|about|for|the|my|our|a|an|that|this|his|her|their|some)\\s+)+", caseless);
    return trimmed(article.replaceAll(trimmed(words), ""));
}

/// "my dentist reminder", "the reminder about the dentist": the words of its task. Empty for "the reminder".
std::string taskNamed(const std::string& words)
{
    static const Pattern thing(
        "^(?:(?:that|this|the|my|our) )?(?:(.+) )?reminder(?: (?:to|about|for|of|that says)(?: the| my)? (.+))?$",
        caseless);
    const auto match = thing.find(trimmed(words));
    return match ? withoutArticle(match->texts[0].empty() ? match->texts[1] : match->texts[0]) : withoutArticle(words);
}

std::optional<ReminderChange> readList(const std::string& core)
{
    static const Pattern list(
        "^(?:(?:what|which) reminders (?:do i have|are there|have i got|are (?:set|due|left|pending|open))"
        "|what are my reminders|do i have (?:any )?reminders"
        "|(?:show|list|read|tell|give)(?: me)?(?: out)?(?: all)?(?: of)? (?:my|the) reminders|(?:all )?my reminders"
        "|what (?:do i(?: still)? have|have i(?: still)? got) to do|what(?:'s|’s| is) (?:there|left) to do"
        "|what should i not forget|(?:are there |have i got )?any (?:open |pending )?reminders"
        "|(?:what|which) reminders are (?:coming up|next|there)|what(?:'s|’s| is) on my (?:to-do list|to do list|list)"
        ")(?:\\s+(.+))?$",
        caseless);
    static const Pattern lead("^(?:due|set|for|pending|left)\\s*", caseless);
    const auto match = list.find(core);
    if (!match)
        return std::nullopt;
    return ReminderChange{.kind = Kind::list, .days = lead.replaceAll(match->texts[0], "")};
}

std::optional<ReminderChange> readDone(const std::string& core)
{
    static const Pattern plain(
        "^(?:(?:i'm|i’m|i am|it's|it’s|it is|that's|that’s|that is|all)(?: all)? )?(?:done|finished)(?: with)?(?: "
        "(?:it|that|already|now))?$"
        "|^i (?:have )?(?:already )?(?:did|done|finished) (?:it|that)(?: already)?$"
        "|^i(?:'ve|’ve) (?:already )?(?:done|finished)(?: (?:it|that))?(?: already)?$"
        "|^(?:mark|tick|check)(?: (?:it|that|this))?(?: off)?(?: as)?(?: done| finished| complete)?$",
        caseless);
    static const Pattern named("^(?:mark|tick off|check off|tick|complete|finish) (?:the reminder |my reminder )?(.+?)"
                               "(?: (?:as|is) (?:done|finished|complete)| off)$"
                               "|^(?:tick off|check off|cross off|cross out) (.+)$"
                               "|^i(?:'m| am|’m) (?:done|finished) with (.+)$"
                               "|^(?:the |my )?(.+) (?:is|are) (?:done|finished|taken care of)$"
                               "|^(?:delete|remove|cancel|drop|clear|dismiss|scratch|forget|get rid of|turn off)"
                               " ((?:(?:the|my|that|this) )?(?:.+ )?reminder(?: (?:to|about|for|of) .+)?)$"
                               "|^(?:the |my )?(.+ reminder) (?:is|can be) (?:done|finished|off|deleted)$"
                               "|^(?:finish|complete|check off|tick off) (.+ reminder)$",
        caseless);
    static const Pattern past(
        "^i(?:'ve| have|’ve)?(?: already| just)? (?:called|rang|rung|phoned|emailed|texted|messaged|paid|bought"
        "|got|watered|fed|sent|mailed|posted|picked up|collected|returned|cleaned|washed|visited|took|taken"
        "|booked|finished|did|done|wrote|written|renewed|checked|walked|ordered|cancelled|fixed|made|met"
        "|cooked|packed|printed|signed|submitted|turned off|took out|taken out) (.+)$",
        caseless);
    static const Pattern tail("\\s+(?:already|now|today|just now|by the way)$", caseless);
    // Long stories are no task, and neither are people who are only pointed at.
    static const Pattern isSomethingElse("^(?:you|it|him|her|them|us)\\b|(?:\\S+\\s+){5}\\S", caseless);
    if (plain.find(core) && core != "check" && core != "mark" && core != "tick")
        return ReminderChange{.kind = Kind::done};
    for (const Pattern* pattern : {&named, &past}) {
        const auto match = pattern->find(core);
        if (!match)
            continue;
        std::string task;
        for (const std::string& text : match->texts)
            task += text;
        if (isSomethingElse.find(task))
            return std::nullopt;
        return ReminderChange{.kind = Kind::done, .task = taskNamed(tail.replaceAll(task, ""))};
    }
    return std::nullopt;
}

std::optional<ReminderChange> readLater(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern vague(
        "^(?:later|not now|a (?:bit|little) later|(?:remind|ask|tell) me (?:again )?(?:a (?:bit|little) )?later"
        "|maybe later|snooze(?: it| that)?|remind me again|not yet)$",
        caseless);
    static const Pattern again(
        "^(?:(?:remind|ask|tell) me (?:again|once more|about (?:it|that)(?: again)?)"
        "|(?:snooze|postpone|delay|put|move|push|shift)(?: off| back)?(?: it| that| this| (?:the|that|this|my) "
        "reminder)?"
        "(?: off| back)?|(?:change|make|set|reschedule) (?:it|that|(?:the|that|this|my) reminder))"
        "(?: (?:until|till|to|by|for))? (.+)$",
        caseless);
    static const Pattern named(
        "^(?:snooze|postpone|delay|put off|move|push|reschedule|shift|change)(?: back)?"
        " (?:the |my )?reminder (?:to|about|for|of) (.+?) (?:until|till|to|by|for) (.+)$"
        "|^(?:put|push) (?:the |my )?reminder (?:to|about|for) (.+?) off (?:until|till|to|by|for) (.+)$"
        "|^(?:snooze|postpone|delay|put off|move|push|reschedule|shift|change|put)(?: back)?"
        " (?!an? |(?:the|my|our|that|this) reminder)(?:the |my |our )?(.+?) reminder(?: off| back)?(?: "
        "(?:until|till|to|by|for))? (.+)$",
        caseless);
    static const Pattern span(
        "^(?:(?:an?|one|half|\\d+|five|ten|fifteen|twenty|thirty)\\b.*)?(?:minutes?|hours?|days?|weeks?)$", caseless);
    // Moved by a length it goes on from its own time, else from now.
    static const Pattern moved(
        "^(?:move|shift|push|postpone|delay|put)\\b.* by (?:an?\\b|one|half|\\d|\\w+ (?:min|hou|day|wee))", caseless);
    const std::string lead = moved.find(core) ? "by " : "in ";
    const auto until = [&lead](const std::string& words) { return span.find(words) ? lead + words : words; };
    if (vague.find(core))
        return ReminderChange{.kind = Kind::later, .when = "later"};
    // "Not now, remind me this evening": what comes behind is the wish.
    static const Pattern notNow("^(?:not (?:now|yet)|(?:maybe )?later)[,;.!:]?\\s+(?:please\\s+)?"
                                "(?:(?:remind|ask|tell) me(?: again)?\\s+)?(.+)$",
        caseless);
    if (const auto match = notNow.find(core))
        return readLater("remind me again " + match->texts[0], around);
    if (const auto match = named.find(core)) {
        const std::size_t place = !match->texts[0].empty() ? 0 : !match->texts[2].empty() ? 2 : 4;
        return ReminderChange{
            .kind = Kind::later, .task = withoutArticle(match->texts[place]), .when = until(match->texts[place + 1])};
    }
    const auto match = again.find(core);
    static const Pattern instead("\\s+instead$", caseless);
    const std::string when = match ? until(instead.replaceAll(match->texts[0], "")) : core;
    if (match && when.starts_with("by "))
        return ReminderChange{.kind = Kind::later, .when = when};
    const auto phrase = ReminderPhrase::parse(RequestText::withDigits(when), around.now, around.calendar);
    // A time and nothing else is a later time for what is due.
    if (phrase && phrase->task.empty() && !phrase->repeatRule)
        return ReminderChange{.kind = Kind::later, .when = RequestText::withDigits(when)};
    return std::nullopt;
}

} // namespace

std::optional<ReminderChange> ReminderChange::read(std::string_view words, const RuleSurroundings& around)
{
    const std::string core(words);
    if (auto list = readList(core))
        return list;
    if (auto done = readDone(core))
        return done;
    return readLater(core, around);
}

} // namespace quorvell
