// SPDX-License-Identifier: MIT
#include "Understanding/words/WishBehind.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/WordRewriting.h"

#include <optional>

namespace quorvell {

namespace {

const std::string joint =
    "[\\s,;.!:–-]+(?:(?:and|so|then|but|also|please|kindly|just|go ahead and|quickly|do"
    "|(?:can|could|would|will) (?:you|we)(?: please| just)?|you can|i want you to|i need you to)[\\s,]+)*";
const std::string it =
    "(?:it|that|this|them|these|those|the same(?: thing)?|same|both(?: of them)?|all (?:of )?(?:it|that|them)"
    "|one|some|all three|these things)";
const std::string ending = "(?: for me| please| too| as well| now| also)*[\\s.!?]*$";
const std::string list =
    "(?:(?:my |the |our |a )?(?:[\\w'’-]+ ){0,3}(?:\\w*lists?|to.?dos?|groceries|shopping|tasks|chores|errands)"
    "|(?:my |the |our )(?:[\\w'’-]+ )?(?:grocery|store)|things to do)";

struct Parts {
    std::string matter;
    std::string place; ///< "the list"; what else was said of it.
};

std::optional<Parts> partsBy(const Pattern& pattern, const std::string& words)
{
    const auto match = pattern.find(words);
    if (!match || match->texts[0].empty())
        return std::nullopt;
    return Parts{trimmed(match->texts[0], ",;:-"), match->texts.size() > 1 ? match->texts[1] : std::string()};
}

/// The thing in a statement that it is missing, or to be done: "coffee" of "we are out of coffee", "call the vet" of "I
/// have to call the vet".
std::string thingIn(const std::string& statement, bool isToBuy)
{
    static const WordRewriting leads({
        {"^(?:i|we)(?: think)?(?: (?:i|we))?(?:['’]?(?:re|m|ve)| are| am| have| just| almost| nearly)*(?: all| almost| "
         "nearly| running| completely| just| run| ran)* (?:out of|low on|short of|short on|down to (?:the|my|our) "
         "last) "
         "(?:the |my |our )?",
            ""},
        {"^(?:there(?:['’]?s| is| are)|(?:i|we)(?:['’]ve| have)?(?: got)?) no (?:more )?(.+?)(?: left| anymore| any "
         "more)?$",
            "$1"},
        {"^no (?:more )?(.+?)(?: left| anymore| any more)?$", "$1"},
        {"^(?:i|we) (?:do not|don['’]?t|haven['’]?t|have not) (?:have|got) (?:any|enough) (?:more )?(.+?)(?: left| "
         "anymore)?$",
            "$1"},
        {"^(?:i|we) (?:(?:just )?(?:finished|used up|used|forgot|ate|drank))(?: all| up| the last of| the last)*(?: "
         "of)? "
         "(?:the |my |our )?",
            ""},
        {"^(?:the |my |our )?(.+?) (?:is|are|has|have)(?: all| almost| nearly| just| been)* (?:out|finished|gone|empty"
         "|running (?:out|low)|over|used up)$",
            "$1"},
        {"^(?:i|we)(?:['’]ve| have)?(?: got)? (?:to|need to|must|should|ought to) ", ""},
        {"^(?:i|we)(?:['’]ll| will| also| really| do| still)* (?:need|want|require|could do with|would like|must have)"
         "(?: to)?(?: have)? (?:some |more |another |any )*",
            ""},
        {"^i(?:['’]d| would) (?:like|love) (?:to |some )?", ""},
        {"^(?:task|item|to.?do|reminder|groceries|shopping|buy list)\\s*: ?", ""},
        {"^(?:do not|don['’]?t) (?:let me )?forget (?:to |the |about )?", ""},
    });
    static const WordRewriting buying({{"^(?:buy|get|pick up|grab|order|purchase|fetch)(?: some| more| me)? ", ""}});
    static const WordRewriting article({{"^(?:an?|some) (?=\\S)", ""}});
    const std::string thing = leads.first(statement);
    return article.first(isToBuy ? buying.first(thing) : thing);
}

bool holdsTime(const std::string& words)
{
    static const Pattern time(
        "\\b(?:(?:mon|tues|wednes|thurs|fri|satur|sun)days?|mon|tues?|wed|thurs?|fri|sat|sun|today"
        "|tonight|tomorrow|next (?:week|month|year)|weekend|noon|midnight"
        "|(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?"
        "|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?) \\d{1,2}|\\d{1,2}(?:st|nd|rd|th)"
        "|\\d{1,2}[./-]\\d{1,2}|\\d{1,2} (?:of )?(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)\\w*"
        "|christmas|easter|every (?:day|week|month|year))\\b",
        Pattern::caseless);
    return time.find(words).has_value();
}

/// What is asked for by itself: a wish, or a question.
bool asks(const std::string& matter)
{
    static const Pattern asking(
        "^(?:what|when|where|who|which|how|is|are|do i|did|does|has|am i|find|show|tell|read|list|"
        "check|cancel|delete|remove|move|change|play|open|search|look|note|write|jot|put|set|remind"
        "|create|make|start|add|schedule|book|enter|block|plan|arrange|pencil|organi[sz]e|insert|new|take|undo|no|not|"
        "yes|yeah|yep|okay|ok|sure|if)\\b",
        Pattern::caseless);
    return asking.find(RequestText::withoutOpening(matter)).has_value();
}

std::optional<std::string> intoList(const std::string& words)
{
    static const Pattern adding("^(.+?)" + joint
            + "(?:put|add|write|pop|stick|note|get|include|chuck|throw|jot|place|enter|save|insert|bung|append)"
              "(?: (?:down )?"
            + it + ")?(?: down)? (?:to|on|onto|in|into|for) (" + list + ")" + ending,
        Pattern::caseless);
    static const Pattern toDo("to.?do|task|chore|job|errand", Pattern::caseless);
    const auto parts = partsBy(adding, words);
    if (!parts || asks(parts->matter))
        return std::nullopt;
    return "add " + thingIn(parts->matter, !toDo.find(parts->place)) + " to " + parts->place;
}

std::optional<std::string> outOfPlace(const std::string& words)
{
    static const Pattern removing("^(.+?)" + joint
            + "(?:remove|delete|take|cancel|drop|erase|cross|scratch|strike|get)(?: " + it
            + ")?(?: off| out)?(?: of)?(?: (?:from|off|of|on|in)? ?((?:my |the |our )?(?:[\\w'’-]+ "
              "){0,3}(?:\\w*lists?|to.?dos?"
              "|groceries|shopping|calendar|diary|agenda|schedule)))?"
            + ending,
        Pattern::caseless);
    static const Pattern unwanted(
        "^(?:i|we)(?:['’]ve| have)? (?:changed (?:my|our) minds? about|(?:do not|don['’]?t|won['’]?t|will not)(?: "
        "really)? (?:need|want)|no longer "
        "(?:need|want)"
        "|(?:already )?(?:bought|got|have)|(?:need|have|want|had) to (?:cancel|miss|skip)"
        "|(?:can['’]?t|cannot|won['’]?t)(?: be able to)? (?:make(?: it to)?|go to|attend|do|afford)"
        "|(?:do not|don['’]?t) have (?:enough |the )?money (?:to buy|to get|for))"
        " (.+?)(?: anymore| any more| already| now| right now)?$"
        "|^(.+?) (?:is|are|was|were|has been|have been|got|['’]s)(?: been)? (?:cancelled|canceled|called "
        "off|off|over|out)"
        "(?: now)?$",
        Pattern::caseless);
    const auto match = removing.find(words);
    const auto thing = match ? unwanted.find(match->texts[0]) : std::nullopt;
    if (!thing)
        return std::nullopt;
    const std::string place = match->texts[1];
    const std::string matter = thing->texts[0].empty() ? thing->texts[1] : thing->texts[0];
    return "remove " + matter + (place.empty() ? "" : " from " + place);
}

/// What has a time and is to be kept is an event.
std::optional<std::string> intoCalendar(const std::string& words)
{
    const std::string place =
        "(?:in|on|into|onto|to|for) (?:my |the |our )?(?:calendar|calender|cal|diary|agenda|schedule|planner)";
    static const Pattern keeping("^(.+?)" + joint
            + "(?:(?:put|add|write|pop|stick|note|get|enter|save|mark|schedule|log|record|set|jot|include|update|"
              "pencil) (?:down )?"
            + it + "(?: down| in)? " + place + "|(?<=[,;:–-] )(?:(?:add|put|note) )?"
            + place
            // Without a place, what is only noted is a note.
            + "|(?:put|add|pop|stick|enter|save|mark|schedule|set|block|fix|include|pencil) (?:down )?" + it
            + "(?: down| in)?" + "|calendar " + it + "|make sure (?:it|that)(?:['’]?s| is) " + place
            + ")((?: (?:as )?(?:all day|full day|whole day|every "
              "(?:day|week|month|year)|daily|weekly|monthly|yearly))?)"
            + ending,
        Pattern::caseless);
    static const Pattern past("\\b(?:was|were|did|went|had|yesterday|last|came|ago|has been)\\b", Pattern::caseless);
    static const WordRewriting leads({
        {"^(?:i|we)(?:['’]m|['’]re| am| are|['’]ll be| will be) (?:having|attending|on) (?:an? |the )?", ""},
        {"^(?:i|we)(?:['’]ve| have) (?!to\\b|got\\b)(?:an? |the |my |our )?", ""},
        {"^(?:(?:i|we)(?:['’]ve| have)? )?got (?!to\\b)(?:an? |the |my |our )?(.+?)(?: booked)?(?= (?:for|on|at)\\b)",
            "$1"},
        {"^there(?:['’]s| is) (?:an? |the )?", ""},
    });
    const auto parts = partsBy(keeping, words);
    if (!parts || !holdsTime(parts->matter) || asks(parts->matter) || past.find(parts->matter))
        return std::nullopt;
    const std::string matter = RequestText::withoutOpening(parts->matter);
    return leads.first(matter.empty() ? parts->matter : matter) + parts->place + ", put that in my calendar";
}

/// "I forgot to put sugar on the list, do it for me".
std::optional<std::string> forgotten(const std::string& words)
{
    static const Pattern form(
        "^i (?:forgot|keep forgetting|was going|wanted|meant|still have) to ((?:add|put|write|set|create"
        "|cancel|delete|remove|schedule|book|make)\\b.+?)"
            + joint + "do (?:it|that|this|so)" + ending,
        Pattern::caseless);
    const auto match = form.find(RequestText::withoutOpening(words));
    return match ? std::optional(match->texts[0]) : std::nullopt;
}

/// "Need bananas and apples on the shopping list".
std::optional<std::string> needed(const std::string& words)
{
    static const Pattern form("^(?:(?:i|we)(?:['’]ll| will| also| really| do)* )?(?:need|want) (?:some |more "
                              ")?(?!(?:to|you|u|it|this|that)\\b|an? (?:new )?list)"
                              "([^,].*?) (?:put )?(?:on|onto|in|to|added to) ("
            + list + ")" + ending,
        Pattern::caseless);
    const auto parts = partsBy(form, words);
    return parts ? std::optional("add " + parts->matter + " to " + parts->place) : std::nullopt;
}

} // namespace

std::string WishBehind::inFront(const std::string& words)
{
    for (const auto reader : {forgotten, needed, intoList, outOfPlace, intoCalendar}) {
        if (auto turned = reader(words))
            return *std::move(turned);
    }
    return words;
}

} // namespace quorvell
