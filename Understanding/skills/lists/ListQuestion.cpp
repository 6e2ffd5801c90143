// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListQuestion.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <string>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

Found qOf(Kind kind, std::string list)
{
    return ListIntent{.kind = kind, .list = std::move(list)};
}

Found qOfItems(Kind kind, std::string list, const std::string& items)
{
    return ListIntent::ofItems(kind, std::move(list), items);
}

/// "Read all my lists", "is there milk on any list", "which list is milk on".
Found ofEach(const std::string& text)
{
    static const Pattern all(
        "^(?:read|tell|show|open|give|go through|run through|list|say|recite)(?: me| us| out| back)*(?: what is on"
        "|(?: of)? everything (?:on|in)| the (?:contents?|items) (?:of|on|in)| items (?:on|in|from))? "
        "(?:all|each|every(?: one)?)(?: of)?(?: my| the| our)* lists?(?: to me| out| aloud)?$"
        "|^(?:go|run|read) through (?:my|the|our|all) lists$|^what is on (?:all )?(?:my|the|our) lists$"
        "|^(?:list|display|show|read|tell|give|view|open)(?: me)?(?: out)? (?:all )?(?:of )?(?:the |my )*items$"
        "|^(?:read|show|open|tell|display)(?: me)? list (?:number |no\\.? ?)?(?:\\d+|one|two|three)$"
        "|^(?:check)?list$|^list (?:contents?|details|status|everything|it all|all(?: items?)?|(?:the |my )?items)$",
        Pattern::caseless);
    static const Pattern onAny("^(?:do (?:i|we) have|have (?:i|we)(?: got)?|are there|is there|is|are|did (?:i|we) "
                               "(?:put|add))(?: any| some| there)*(?: (.+?))? (?:on|in|to|left on) (?:any(?: one)?"
                               "|one|some)(?: of)?(?: my| the| our| other)* lists?$",
        Pattern::caseless);
    static const Pattern whichHolds(
        "^(?:which|what)(?: of my)? lists? (?:is|are|has|have|contains?|holds?|includes?|shows?|did (?:i|we) "
        "(?:put|add|"
        "write|have)|do (?:i|we) have|was|were)(?: the| any| some)? (.+?)(?: (?:on|in|to)(?: it| them)?)?$"
        "|^(?:on|in) (?:which|what) lists? (?:is|are|did (?:i|we) (?:put|add|write)|do (?:i|we) have|was|were)"
        "(?: the| any| some)? (.+)$",
        Pattern::caseless);
    static const Pattern anything("^(?:anything|something|things?|stuff|items?|tasks?|more|open|due|outstanding|left)?("
                                  "?: (?:else|left|outstanding"
                                  "|open|due|undone|unfinished|to do|still|pending|new|items?|tasks?|things?))*$",
        Pattern::caseless);
    if (all.find(text))
        return qOf(Kind::showEach, "");
    if (const auto match = onAny.find(text))
        return anything.find(match->texts[0]) ? qOf(Kind::showEach, "") : qOfItems(Kind::find, "", match->texts[0]);
    static const Pattern noThing("^(?:there|mine|currently|now|today|made|created|saved|new|newest|latest|longest|"
                                 "shortest|available|the|this|that)$",
        Pattern::caseless);
    const auto match = whichHolds.find(text);
    const std::string thing = match ? match->texts[0] + match->texts[1] : std::string();
    return thing.empty() || noThing.find(thing) ? std::nullopt : qOfItems(Kind::find, "", thing);
}

/// "What are my tasks": the to-do list, or reminders where there is none.
Found ofDuties(const std::string& text)
{
    static const Pattern tasks(
        "^(?:what(?: are| is|['’]s)?|which|show(?: me)?|list|read(?: me)?|tell me|give me|display|open"
        "|see|view|check|any|do (?:i|we) have(?: any)?|are there(?: any)?|how many)?"
        "(?: (?:all|of|my|our|the|open|pending|current|outstanding|remaining|unfinished|today['’]?s|tomorrow['’]?s))* "
        "?tasks(?: (?:do|i|we|have|are|there|left|still|to do|to|done|complete|finish|got|need|list"
        "|open|pending|remain|remaining|for today))*$",
        Pattern::caseless);
    static const Pattern duties(
        "^what (?:else )?(?:do|must|should) (?:i|we) (?:still |also )?(?:(?:have|need) to )?(?:still "
        ")?do(?: still)?$|^what(?:['’]s| is) (?:left|still) to do$|^what have i (?:still |left )*"
        "(?:got )?to do$",
        Pattern::caseless);
    static const Pattern left(
        "^how (?:many|much)(?: things?| more)? (?:(?:are |do i have |is )?(?:left|still)|do i (?:still )?have)? ?to do$"
        "|^(?:what|which) (?:tasks|chores|jobs) (?:do|must|should|have) i .*$"
        "|^(?:show|tell|give|read|list|what are)(?: me)?(?: all)?(?: my| the) (?:chores|jobs|things to do)$",
        Pattern::caseless);
    static const Pattern amount("^how many\\b", Pattern::caseless);
    if (!tasks.find(text) && !duties.find(text) && !left.find(text))
        return std::nullopt;
    return qOf(amount.find(text) ? Kind::count : Kind::show, "to do");
}

Found lists(const std::string& text)
{
    static const Pattern whichLists(
        "^(?:(?:tell|show|give|read|list|display|see|view|open)(?: me)? )?(?:out )?"
        "(?:about )?(?:(?:what|which)(?: are| is)? |how many )?(?:do i have |have i (?:got )?|all (?:of )?)?"
        "(?:(?:all|any|my|the|our|other|available|current|existing|of|different|saved) )*lists"
        "(?: (?:do|have|are|did|that|which|is|i|we|you|got|made|make|there|available|saved|exist"
        "|about|stored|created?|with|numbers?|for|today|right|now|currently|mine|in|my|notebook|me|can|see))*$",
        Pattern::caseless);
    static const Pattern which(
        "^(?:(?:tell|show|give|list|read|display)(?: me)? |what are )?(?:the |all )*(?:names? of (?:all )?(?:of "
        ")?(?:my |the )?lists"
        "|list names)$|^(?:which|what) lists?(?: (?:do|have) i(?: have| got)?(?: currently| now| today)?)?$|^(?:tell "
        "me |show me |show )?(?:the )?lists? (?:that (?:is|are) )?available$",
        Pattern::caseless);
    static const Pattern available(
        "^(?:show|display|read)(?: me)? the list (?:that|which) (?:is|are) available\\b", Pattern::caseless);
    static const Pattern several(
        "^(?:do (?:i|we) have|have i(?: got)?|are there) (?:more than one|several|many|multiple|other) lists?$"
        "|^how many (?:\\w+ ){1,2}lists (?:do|have) (?:i|we)(?: have| got)?$",
        Pattern::caseless);
    if (several.find(text))
        return qOf(Kind::showAll, "");
    if (whichLists.find(text) || which.find(text) || available.find(text))
        return qOf(Kind::showAll, "");
    return ofEach(text);
}

/// Whether something is on a list, or how much is.
/// "What do I need from the store": the shopping list.
Found shopping(const std::string& text)
{
    static const Pattern form(
        "^(?:tell me |show me )?(?:what|which)(?: \\w+)? (?:(?:do|did|should|must|am|are|were|was) )?(?:i|we)\\b"
        "(?: (?:still|need|have|want|plan|planning|going|supposed|meant|got|to|it))* "
        "(?:buy|purchase|shop for|(?:(?:get|pick up) )?(?:from|at|in) the (?:store|shops?|supermarket|market|grocery "
        "store))"
        "(?: (?:from|at|in) the (?:store|shops?|supermarket|market|grocery store))?(?: today| now| tomorrow)?$",
        Pattern::caseless);
    static const Pattern left(
        "^(?:(?:show|tell|read)(?: me)? )?(?:what|which)(?:['’]?s| is| are)?(?: (?:groceries|things?|items?|stuff))? "
        "(?:left to (?:buy|get)|(?:groceries )?(?:are )?(?:remaining|left)(?= *$)(?<=groceries are remaining|groceries "
        "are left)|(?:i|we) (?:still )?(?:have|need) to (?:buy|get)|(?:groceries )?do (?:i|we) (?:still "
        ")?need to (?:buy|get))$"
        "|^(?:what|which) groceries do (?:i|we) (?:still )?need$",
        Pattern::caseless);
    static const Pattern toBuy("^(?:(?:tell|show)(?: me)? )?(?:what|how many)(?: things)? (?:to|is it that (?:i|we) "
                               "(?:need|have) to|do (?:i|we) (?:need|have) to) "
                               "(?:buy|purchase)$",
        Pattern::caseless);
    if (toBuy.find(text))
        return qOf(Kind::showEach, "shopping");
    static const Pattern packing(
        "^what (?:else )?(?:do|must|should|did) (?:i|we) (?:still )?(?:(?:need|have|want) to )?pack$",
        Pattern::caseless);
    if (packing.find(text))
        return qOf(Kind::show, "packing");
    static const Pattern added(
        "^(?:did|have) (?:i|we) (?:already |ever )?(?:add|added|put down|put|include|included) "
        "(?:any |some |the )?([a-z ]{3,40}?)(?: (?:to|on|in) (?:groceries|grocery|shopping|tasks))?(?: "
        "already| yet)?$",
        Pattern::caseless);
    static const Pattern list("\\blists?\\b", Pattern::caseless);
    if (const auto match = added.find(text); match && !list.find(text) && !ListPhrase::isKeptElsewhere(match->texts[0]))
        return qOfItems(Kind::find, "", match->texts[0]);
    static const Pattern one(
        "^do (?:i|we) (?:still )?need (?:to (?:buy|get|pick up)(?: any| some| more)?|any "
        "more|any|more) ([a-z ]{3,40})$"
        "|^do (?:i|we) (?:still )?need ((?!to\\b|a\\b|an\\b|the\\b|my\\b)[a-z]{3,20}(?: [a-z]{3,20})?)$",
        Pattern::caseless);
    if (const auto match = one.find(text))
        return qOfItems(Kind::find, "", match->texts[0] + match->texts[1]);
    return form.find(text) || left.find(text) ? qOf(Kind::showEach, "shopping") : std::nullopt;
}

Found asking(const std::string& text)
{
    static const Pattern onAny(ListPhrase::links("on|in|onto|to|down on"), Pattern::caseless);
    static const Pattern onOrIn(ListPhrase::links("on|in"), Pattern::caseless);
    static const Pattern isOn("^(?:(?:check|see|tell me|confirm|verify|find out) )?(?:(?:if|whether|that) (?:there )?)?"
                              "(?:is|are|was|were)(?: there)?(?: any| still| already)* (.+)$",
        Pattern::caseless);
    static const Pattern haveOn("^(?:(?:check|see|tell me) (?:if|whether) "
                                ")?(?:do|did|have|had|has|if|whether)?\\s*(?:i|we|you|anyone|anybody)(?:['’]ve)? "
                                "?(?:have|got|already|forget|forgotten|ticked(?: off)?|checked(?: "
                                "off)?|bought|done|put|add|added|include|included|write|written|wrote|need|still)+(?"
                                ": (?:got|any|already|put|add|added|included|written))* (.+)$",
        Pattern::caseless);
    static const Pattern checked("^(?:check|see|confirm|verify)(?: (?:if|whether|that))? (.+?) (?:is|are)(?: already| "
                                 "still| there)? ((?:on|in) .+)$",
        Pattern::caseless);
    static const Pattern holds("^(?:does|do|has|have|will) (.+?) (?:have|contain|include|hold|got)(?: any| the)? "
                               "(.+?)(?: (?:on|in) (?:it|there))?$",
        Pattern::caseless);
    static const Pattern howMany(
        "^(?:how (?:many|much)|(?:(?:what is|what['’]s|tell me) )?(?:the )?(?:number|count) of|count(?: the)?|how long "
        "(?:is|are))(?: "
        "(?:things?|items?|entries|stuff|events|tasks?|of|different|more|products?|do|i|we|have|are|is|there|got|left|"
        "still|does|remain|open|to|buy|get|in|on))* (?:on|in|does|of|left on)? ?(.+)$",
        Pattern::caseless);
    static const Pattern tail("(?:\\s+(?:already|still|yet|done|bought|finished|completed?|ticked(?: off)?|checked(?: "
                              "off)?|saved|stored|listed|written|written down|down|now|have|hold|contain|there))+$",
        Pattern::caseless);
    static const Pattern thing(
        "^(?:there|all (?:of )?(?:the |my "
        ")?(?:items?|things?|tasks?).*|anything|something|things?|stuff|items?|everything|all|any|what|more|much|"
        "anything (?:else|left|outstanding|open)|(?:anything|something|things|items) .*)$",
        Pattern::caseless);
    static const Pattern listMade(
        "^(?:do|did|have|is|are|has)\\s*(?:i|we|there|you)?\\s*(?:have|know|got|make|made|create|"
        "created|start|started|already|an?|any|write|written)\\b\\s*(.+)$",
        Pattern::caseless);
    static const Pattern lookedFor(
        "^(?:check|search|look (?:at|in|on|through)|scan) (.+?) for (.+)$", Pattern::caseless);
    static const Pattern found("^(?:find|look for|search for|check for) (.+ (?:on|in) .+)$", Pattern::caseless);
    static const Pattern placed("^(?:(?:what(?: is|['’]s| was)|tell me|read(?: me| out)?|show me|give me|say|which is) "
                                ")(the .+|(?:item|number) "
                                "\\w+) (?:on|of|in|to) (.+)$",
        Pattern::caseless);
    if (const auto match = placed.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[1]);
        const std::string place = ItemWords::named(match->texts[0]);
        if (name && place.starts_with('#'))
            return ListIntent{.kind = Kind::has, .list = *name, .items = {place}};
    }
    if (const auto match = lookedFor.find(text)) {
        if (const auto name = ListPhrase::nameIn(match->texts[0]))
            return qOfItems(Kind::has, *name, match->texts[1]);
    }
    if (const auto match = found.find(text)) {
        const auto parts = ListPhrase::endingIn(match->texts[0], onOrIn);
        if (parts && !parts->before.empty())
            return qOfItems(Kind::has, parts->list, parts->before);
    }
    // What is asked of the list as a whole is answered by what is on it.
    static const Pattern asWhole(
        "^(?:is|are) (.+\\blist) (?:empty|full|long|short|still (?:empty|there))(?: now| yet)?$"
        "|^(?:what|which)(?: \\w+){1,3}? (?:is|are|do (?:i|we) have|have (?:i|we)(?: got)?|did (?:i|we) "
        "(?:put|add|write))(?: left| still| written| listed| listed down| down)* (?:on|in|to) (.+)$"
        "|^(?:any|anything|something)(?: \\w+){0,3}? (?:on|in) (.+)$"
        "|^(?:have|did|am) (?:i|we) (?:finish|finished|complete|completed|done|do)(?: with)? (.+?)(?: yet)?$"
        "|^(?:(?:what(?: is|['’]s)|tell me|read(?: me)?) )?(?:the )?next(?: (?:item|thing|one|up|task))? "
        "(?:on|in|of|from) (.+)$"
        "|^(?:give |tell |show )?(?:me )?(?:the |an? )?(?:contents?|details?|status|summary|overview) "
        "(?:of|on|in|about) (.+)$",
        Pattern::caseless);
    if (const auto match = asWhole.find(text))
        for (const std::string& list : match->texts)
            if (auto name = list.empty() ? std::nullopt : ListPhrase::nameIn(list))
                return qOf(Kind::show, *std::move(name));
    const std::string asked = tail.replaceAll(text, "");
    static const Pattern howManyOf(
        "^how (?:many|much) "
        "(?!(?:things?|items?|entries|stuff|events|tasks?|products?|lists?|of|more|is|are|do)\\b)(.+?) "
        "(?:is|are|do (?:i|we) have|have (?:i|we)(?: got)?)(?: there| left)? (?:on|in) (.+)$",
        Pattern::caseless);
    if (const auto match = howManyOf.find(asked))
        if (const auto name = ListPhrase::nameIn(match->texts[1]))
            return qOfItems(Kind::has, *name, match->texts[0]);
    static const Pattern whichIsThere(
        "^(?:what|which) (.+?\\b" + ListPhrase::listWord + ") (?:do|have) (?:i|we)(?: have| got)?$", Pattern::caseless);
    if (const auto match = whichIsThere.find(asked))
        if (auto name = ListPhrase::nameIn(match->texts[0]); name && !name->empty())
            return qOf(Kind::exists, *std::move(name));
    if (const auto match = howMany.find(asked)) {
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return qOf(Kind::count, *std::move(name));
    }
    for (const Pattern* form : {&isOn, &haveOn}) {
        const auto match = form->find(asked);
        const auto parts = match ? ListPhrase::endingIn(match->texts[0], onAny) : std::nullopt;
        if (!parts || parts->before.empty())
            continue;
        static const Pattern about(
            "^(?:anything|something|things|items|stuff) (?:about|like|called|to do with|for|with) (?:the )?(.+)$",
            Pattern::caseless);
        if (const auto matter = about.find(parts->before))
            return qOfItems(Kind::has, parts->list, matter->texts[0]);
        return thing.find(parts->before) ? qOf(Kind::show, parts->list)
                                         : qOfItems(Kind::has, parts->list, tail.replaceAll(parts->before, ""));
    }
    if (const auto match = checked.find(asked)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], onOrIn);
        if (parts && parts->before == "x")
            return qOfItems(Kind::has, parts->list, match->texts[0]);
    }
    if (const auto match = holds.find(asked)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        if (name)
            return qOfItems(Kind::has, *name, match->texts[1]);
    }
    if (const auto match = listMade.find(asked)) {
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return qOf(Kind::exists, *std::move(name));
    }
    return std::nullopt;
}

Found showing(const std::string& text)
{
    static const Pattern anyLink(ListPhrase::links("on|in|from|to|of|off|inside"), Pattern::caseless);
    static const Pattern lead(
        "^(?:(?:what|which|whats|who(?= is| are|['’]s)|where|wheres|send me|am i missing)(?:['’]?s| is| are| was| "
        "were| do| does| did| "
        "have| has)?|read(?: out| back| "
        "off)?|show|display|see|view|check(?: out)?|open(?: up)?|pull up|bring up"
        "|give|tell|list(?: out)?|get|fetch|find|look (?:at|in|into|up)|go (?:through|over|to)|run "
        "through|recite|say|print|repeat|launch|summari[sz]e|locate|search|run down|pull|bring(?! "
        "back)|explain|describe|how about|what about|hear|i (?:need|want)(?: "
        "to "
        "(?:see|hear|read|check|view|have|know))?(?= (?:my|the|our|what) )|let (?:me|us) "
        "(?:see|hear|know|have)|review|edit|modify|amend|change|alter|manage|i have|i['’]ve "
        "got|evaluate|call "
        "up|load|access)(?=\\s)",
        Pattern::caseless);
    static const Pattern between(
        "^(?:\\s*(?!to[ -]?dos? (?:check "
        "?)?lists?\\b)(?:me|us|out|what['’]?s|what|which|all|the|of|items?|things?|stuff|contents?|entries|everything|"
        "anything|is|"
        "are|"
        "was|that|have|has|do|does|did|i|we|got|put|need(?: to "
        "(?:buy|get|do|pack))?|still|currently|already|there|left|else|tasks?|products?|groceries|more|remains?|"
        "remaining|written|listed|added|details?|status|names?|to|in|on|from|off|inside|for|with|about|today)(?![\\w'’-"
        "])"
        ")+\\s*",
        Pattern::caseless);
    static const Pattern bare("^(?:(?:my|our|the) )(?:\\S+ ){0,4}" + ListPhrase::listWord + "$", Pattern::caseless);
    static const Pattern onlyList("^(?:\\S+ ){1,3}" + ListPhrase::listWord + "$", Pattern::caseless);
    static const Pattern middle("^(?:can|could) (?:you|i)\\b", Pattern::caseless);
    static const Pattern copula(
        "(?:\\s+(?:is|are|say|says|have|has|contains?|includes?|looks? like|what))+$", Pattern::caseless);
    // An unknown verb is no part of a name: "shred the list", "void list".
    static const Pattern deed("^(?:void|recover|restore|undelete|stop|end|destroy|shred|rename|save|drop|forget|lock|"
                              "hide|close|finish|complete|submit|hold|ignore|skip)\\b"
                              "|\\S (?:an?|the|my|this|that|our|in|of)\\b",
        Pattern::caseless);
    static const Pattern besides(" (?:besides|apart from|other than|except(?: for)?) .+$", Pattern::caseless);
    static const Pattern editing("^(?:edit|modify|amend|change|alter)\\b", Pattern::caseless);
    static const Pattern kind("^(?:(?:show|read|open|tell|give|display|view|see|check|what about|how about)(?: me)?(?: "
                              "out)? )?(?:(?:all|my|the|our) )*"
                              "(groceries|grocery|shopping|to[ -]?do|todo|tasks|chores|errands)(?: items)?$",
        Pattern::caseless);
    if (const auto match = kind.find(text))
        return qOf(Kind::show, match->texts[0]);
    const std::string asked = besides.replaceAll(copula.replaceAll(text, ""), "");
    const auto start = lead.find(asked);
    if (!start && (bare.find(asked) || (onlyList.find(asked) && !deed.find(asked)))) {
        if (auto name = ListPhrase::nameIn(asked))
            return qOf(Kind::show, *std::move(name));
    }
    if (!start || middle.find(asked))
        return std::nullopt;
    // What the world holds is no list of theirs.
    static const Pattern ofTheWorld(
        "^\\s*(?:me |us )?(?:an? )(?:\\w+ )?" + ListPhrase::listWord + " (?:of|for|with)\\b", Pattern::caseless);
    if (ofTheWorld.find(asked.substr(start->range.end)))
        return std::nullopt;
    std::string rest = asked.substr(start->range.end);
    if (const auto filler = between.find(rest))
        rest = rest.substr(filler->range.end);
    if (auto name = ListPhrase::nameIn(rest))
        return qOf(editing.find(asked) ? Kind::edit : Kind::show, *std::move(name));
    const auto parts = ListPhrase::endingIn(" " + rest, anyLink);
    static const Pattern idle("^(?:\\w+ ){0,3}\\w*$");
    return parts && idle.find(parts->before) && !ListPhrase::isSentence(parts->before) ? qOf(Kind::show, parts->list)
                                                                                       : std::nullopt;
}

} // namespace

std::optional<ListIntent> ListQuestion::read(const std::string& text)
{
    for (const auto reader : {asking, shopping, ofDuties, showing}) {
        if (auto intent = reader(text))
            return intent;
    }
    return std::nullopt;
}

std::optional<ListIntent> ListQuestion::readLists(const std::string& text)
{
    return lists(text);
}

} // namespace quorvell
