// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListIntent.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace quorvell {

namespace {

const std::string listWord(ListPhrase::listWord);

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

Found of(Kind kind, std::string list)
{
    return ListIntent{.kind = kind, .list = std::move(list)};
}

Found ofItems(Kind kind, std::string list, const std::string& items)
{
    return ListIntent::ofItems(kind, std::move(list), items);
}

Found lists(const std::string& text)
{
    static const Pattern whichLists(
        "^(?:(?:tell|show|give|read|list|display|see|view|open)(?: me)? )?(?:out )?"
        "(?:(?:what|which)(?: are| is)? |how many )?(?:do i have |have i (?:got )?|all (?:of )?)?"
        "(?:(?:all|any|my|the|our|other|available|current|existing|of|different|saved) )*lists"
        "(?: (?:do|have|are|did|that|which|is|i|we|you|got|made|make|there|available|saved|exist"
        "|created?|with|numbers?|for|today|right|now|currently|mine|in|my|notebook|me|can|see))*$",
        Pattern::caseless);
    static const Pattern anyList(
        "^(?:do i have|have i(?: got)?|are there|is there) (?:anything|something|any|things)?.*\\b"
        "any (?:of my )?(?:other )?lists?$",
        Pattern::caseless);
    static const Pattern available(
        "^(?:show|display|read)(?: me)? the list (?:that|which) (?:is|are) available\\b", Pattern::caseless);
    return whichLists.find(text) || anyList.find(text) || available.find(text) ? of(Kind::showAll, "") : std::nullopt;
}

/// "A list for the party", with what is to be on it.
Found created(const std::string& phrase)
{
    static const Pattern filled("^(.*?\\b" + listWord
            + "(?:\\s.*?)?)[,:]?\\s+(?:with|including|containing|that (?:has|says)|and (?:add|put)|having)"
              "(?: the)? (.+)$",
        Pattern::caseless);
    static const Pattern colon("^(.*?\\b" + listWord + "[^:]*):\\s*(.+)$", Pattern::caseless);
    static const Pattern loose("(?:\\s+(?:on|to|in) (?:it|there))$", Pattern::caseless);
    static const Pattern moment(" (?:to be created )?(?:by|at|before) \\d.*$", Pattern::caseless);
    for (const Pattern* form : {&filled, &colon}) {
        const auto match = form->find(phrase);
        const auto name = match ? ListPhrase::nameIn(match->texts[0]) : std::nullopt;
        if (name)
            return ofItems(Kind::create, *name, loose.replaceAll(match->texts[1], ""));
    }
    const auto name = ListPhrase::nameIn(moment.replaceAll(phrase, ""));
    return name ? of(Kind::create, *name) : std::nullopt;
}

Found creation(const std::string& text)
{
    static const Pattern make(
        "^(?:create|make|start|begin|set up|setup|build|prepare|compose|generate|draw up|put together"
        "|write(?: up)?|write me|open up|form|initiate|produce|craft)(?: me| us)?\\s+(?=\\S)",
        Pattern::caseless);
    static const Pattern wanted("^(?:(?:i )?(?:need|want)|open|bring up|show(?: me)?|give me|add|do|let me "
                                "have)\\s+(?=(?:an?|one|another)\\s|new\\s|a new)",
        Pattern::caseless);
    static const Pattern fresh("^(?:an? )?(?:brand[ -])?new\\s+(?=.*\\b" + listWord + "\\b)", Pattern::caseless);
    static const Pattern isNew(
        "^(?:an? |another )?(?:brand[ -])?new\\b|^(?:an?|another) (?:\\S+ ){0,3}" + listWord + "\\b",
        Pattern::caseless);
    if (const auto match = make.find(text)) {
        static const Pattern sure("^sure\\b", Pattern::caseless);
        const std::string rest = text.substr(match->range.end);
        return sure.find(rest) ? std::nullopt : created(rest);
    }
    if (const auto match = wanted.find(text); match && isNew.find(text.substr(match->range.end)))
        return created(text.substr(match->range.end));
    return fresh.find(text) ? created(text) : std::nullopt;
}

/// "Add milk to my list", "put on my list: milk", "update my list with milk", "eggs to the shopping list".
Found addition(const std::string& text)
{
    static const Pattern towards(ListPhrase::links("to|onto"), Pattern::caseless);
    static const Pattern verb(
        "^(?:add|ad|put|include|insert|enter|place|stick|pop|throw|append|write(?: down)?|jot(?: down)?"
        "|note(?: down)?|save|get|log|bung|chuck|also add)(?: in)?\\s+",
        Pattern::caseless);
    static const Pattern links(ListPhrase::links("to|on to|on|onto|in|into|at|under|in to"), Pattern::caseless);
    static const Pattern listFirst(
        "^(?:(?:to|on|onto|in|into) )?(.+?\\b" + listWord + ")(?::|,)?\\s+(?:the following:? )?(.+)$",
        Pattern::caseless);
    static const Pattern update("^(?:update|extend|fill) (.+?) (?:with|by adding) (.+)$", Pattern::caseless);
    static const Pattern sure(
        "^(?:make sure|ensure|see to it|i want|i need|we need|i would like|i['’]d like|let us have)(?: that)? (.+)$",
        Pattern::caseless);
    static const Pattern passive("^(.+?)(?: (?:should|must|needs? to|has to|have to|can|is to|ought to) (?:be|go)| "
                                 "(?:goes|belongs))(?: (?:added|put|written))? "
                                 "((?:to|on|onto|in|into) .+)$",
        Pattern::caseless);
    static const Pattern copula("(?:\\s+(?:is|are|gets?|to be|be|put|added))+$", Pattern::caseless);
    static const Pattern calledList("^(?:the )?(.+\\b" + listWord + ") (?:add|needs) (.+)$", Pattern::caseless);
    if (const auto match = verb.find(text)) {
        const std::string rest = text.substr(match->range.end);
        if (const auto parts = ListPhrase::itemsIn(rest, links); parts && !parts->before.empty())
            return ofItems(Kind::add, parts->list, parts->before);
        static const Pattern led("^(?:to|on|onto|in|into) ", Pattern::caseless);
        const auto first = led.find(rest) ? listFirst.find(rest) : std::nullopt;
        const auto name = first ? ListPhrase::nameIn(first->texts[0]) : std::nullopt;
        if (name)
            return ofItems(Kind::add, *name, first->texts[1]);
        const auto bare = led.find(rest) ? ListPhrase::nameIn(rest.substr(led.find(rest)->range.end)) : std::nullopt;
        return bare ? of(Kind::add, *bare) : std::nullopt;
    }
    if (const auto match = update.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        return name ? ofItems(Kind::add, *name, match->texts[1]) : std::nullopt;
    }
    if (const auto match = sure.find(text)) {
        const auto parts = ListPhrase::endingIn(match->texts[0], links);
        if (parts && !parts->before.empty())
            return ofItems(Kind::add, parts->list, copula.replaceAll(parts->before, ""));
    }
    if (const auto match = passive.find(text)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], links);
        if (parts && parts->before == "x")
            return ofItems(Kind::add, parts->list, match->texts[0]);
    }
    if (const auto match = calledList.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        if (name)
            return ofItems(Kind::add, *name, match->texts[1]);
    }
    // "Eggs to the shopping list" begins with no word that asks for anything else.
    static const Pattern others("^(?:what|which|is|are|do|did|does|have|can|read|show|tell|list|open|remove|delete|"
                                "take|tick|check|cross|move|change"
                                "|rename|go|remind|give|send|share|play|how|where|who|when|call)\\b",
        Pattern::caseless);
    const auto parts = others.find(text) ? std::nullopt : ListPhrase::endingIn(text, towards);
    return parts && !parts->before.empty() ? ofItems(Kind::add, parts->list, parts->before) : std::nullopt;
}

Found removal(const std::string& text)
{
    static const Pattern verb("^(?:(?:find|open|go to) (.+?) and )?(?:remove|delete|take(?: off| out| "
                              "away)?|erase|drop|scratch(?: off| out)?|strike(?: off| out)?"
                              "|get rid of|kill|abolish|eliminate|clear(?: off| out)?|throw out|throw "
                              "away|trash|discard|wipe(?: out)?|empty(?: out)?|bin|dump|pull|clean(?: up| out)?)\\s+",
        Pattern::caseless);
    static const Pattern taking("^(?:take|scratch|strike|pull|drop)\\b", Pattern::caseless);
    static const Pattern emptying("^(?:clear|wipe|empty|clean)\\b", Pattern::caseless);
    static const Pattern passive("^(.+?) (?:should|must|needs? to|has to|have to|can) (?:be |get )?(?:not be "
                                 "on|removed|deleted|taken (?:away|off|out)|erased|go|gone)(?: away)?"
                                 "(?= (?:from|off|out of))(.+)$",
        Pattern::caseless);
    static const Pattern off(
        "^(?!what|which|tick|check|cross|mark|i |is |are )(.+?) off (?:of )?(.+)$", Pattern::caseless);
    static const Pattern links(ListPhrase::links("from|off of|off from|off|out of|on|in|at|of"), Pattern::caseless);
    if (const auto match = verb.find(text)) {
        const std::string rest = text.substr(match->range.end);
        if (!match->texts[0].empty()) {
            const auto name = ListPhrase::nameIn(match->texts[0]);
            return name ? ofItems(Kind::remove, *name, rest) : std::nullopt;
        }
        if (const auto parts = ListPhrase::itemsIn(rest, links); parts && !parts->before.empty())
            return ofItems(Kind::remove, parts->list, parts->before);
        const auto name = ListPhrase::nameIn(rest);
        if (!name)
            return std::nullopt;
        static const Pattern several("\\blists$", Pattern::caseless);
        if (several.find(rest) && name->empty()) // one after the other, by their names
            return of(Kind::showAll, "");
        return emptying.find(text) ? of(Kind::clear, *name)
            : taking.find(text)    ? std::nullopt
                                   : of(Kind::deleteList, *name);
    }
    if (const auto match = passive.find(text)) {
        const auto parts = ListPhrase::endingIn("x" + match->texts[1], links);
        if (parts && parts->before == "x")
            return ofItems(Kind::remove, parts->list, match->texts[0]);
    }
    if (const auto match = off.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[1]);
        static const Pattern leads("^(?:cross|tick|check)\\b", Pattern::caseless);
        if (name && !leads.find(text))
            return ofItems(Kind::remove, *name, match->texts[0]);
    }
    return std::nullopt;
}

Found ticking(const std::string& text)
{
    static const Pattern undone(
        "^(?:untick|uncheck|unmark|uncross|un-tick|un-check) (.+?)(?: (?:on|from|off) (.+))?$", Pattern::caseless);
    static const Pattern verb("^(?:tick|check|cross|mark|strike through)(?: off)? (.+)$", Pattern::caseless);
    static const Pattern done(
        "(?:\\s+(?:off|as (?:done|bought|got|complete|completed|finished|purchased|ticked|checked)"
        "|done|complete|completed|bought|down))+(?=\\s+(?:on|from|of|in|off)\\s|$)",
        Pattern::caseless);
    static const Pattern bought("^(?:i|we)(?:['’]ve| have)?(?: already| just)? (?:got|bought|picked "
                                "up|have|finished|done|did|completed|packed) (.+)$",
        Pattern::caseless);
    static const Pattern isDone("^(.+?) (?:is|are)(?: now| already)? (?:done|bought|finished|packed|ticked off|checked "
                                "off)(?= (?:on|from)) (.+)$",
        Pattern::caseless);
    static const Pattern links(ListPhrase::links("off of|off|on|from|in|of"), Pattern::caseless);
    if (const auto match = undone.find(text)) {
        const auto name = match->texts[1].empty() ? std::nullopt : ListPhrase::nameIn(match->texts[1]);
        return name ? ofItems(Kind::untick, *name, match->texts[0]) : std::nullopt;
    }
    static const Pattern out("^out\\b", Pattern::caseless);
    for (const Pattern* form : {&verb, &bought}) {
        const auto match = form->find(text);
        const auto parts =
            match && !out.find(match->texts[0]) ? ListPhrase::endingIn(match->texts[0], links) : std::nullopt;
        if (parts && !parts->before.empty())
            return ofItems(Kind::tick, parts->list, done.replaceAll(parts->before, ""));
    }
    if (const auto match = isDone.find(text)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], links);
        if (parts && parts->before == "x")
            return ofItems(Kind::tick, parts->list, match->texts[0]);
    }
    return std::nullopt;
}

Found changing(const std::string& text)
{
    static const Pattern named("^(?:(?:re-?name|retitle) (.+?)|change the (?:name|title) of (.+?)|call (.+?\\b"
            + listWord + ")) (?:to|as|into|in to|instead|simply|just)?\\s*(.+)$",
        Pattern::caseless);
    static const Pattern swapped(
        "^(?:change|replace|swap|substitute|exchange|turn) (.+?) (?:to|with|for|by|into) (.+?) (?:on|in|from|of) (.+)$",
        Pattern::caseless);
    static const Pattern onList(
        "^(?:on|in) (.+?\\b" + listWord + ")[,]? (?:change|replace|swap) (.+?) (?:to|with|for|by|into) (.+)$",
        Pattern::caseless);
    const auto replacing = [](const std::string& list, const std::string& from, const std::string& to) -> Found {
        const auto name = ListPhrase::nameIn(list);
        const auto old = ItemWords::namedAll(from);
        if (!name || old.empty())
            return std::nullopt;
        return ListIntent{.kind = Kind::replace, .list = *name, .items = {old.front(), ListPhrase::withoutEnds(to)}};
    };
    if (const auto match = swapped.find(text))
        if (auto intent = replacing(match->texts[2], match->texts[0], match->texts[1]))
            return intent;
    if (const auto match = onList.find(text))
        if (auto intent = replacing(match->texts[0], match->texts[1], match->texts[2]))
            return intent;
    if (const auto match = named.find(text)) {
        const std::string& list = !match->texts[0].empty() ? match->texts[0]
            : !match->texts[1].empty()                     ? match->texts[1]
                                                           : match->texts[2];
        const auto name = ListPhrase::nameIn(list);
        const std::string title = ListPhrase::withoutEnds(match->texts[3]);
        if (name && !title.empty())
            return ListIntent{.kind = Kind::rename, .list = *name, .title = title};
    }
    return std::nullopt;
}

/// Whether something is on a list, or how much is.
Found asking(const std::string& text)
{
    static const Pattern onAny(ListPhrase::links("on|in|onto|to|down on"), Pattern::caseless);
    static const Pattern onOrIn(ListPhrase::links("on|in"), Pattern::caseless);
    static const Pattern isOn("^(?:(?:check|see|tell me|confirm|verify|find out) (?:if|whether|that) "
                              ")?(?:is|are|was|were)(?: there)?(?: any| still| already)* (.+)$",
        Pattern::caseless);
    static const Pattern haveOn("^(?:(?:check|see|tell me) (?:if|whether) "
                                ")?(?:do|did|have|had|has|if|whether)?\\s*(?:i|we|you|anyone|anybody)(?:['’]ve)? "
                                "?(?:have|got|already|put|add|added|include|included|write|written|wrote|need|still)+(?"
                                ": (?:got|any|already|put|added|included|written))* (.+)$",
        Pattern::caseless);
    static const Pattern checked(
        "^(?:check|see|confirm|verify)(?: (?:if|whether|that))? (.+?) (?:is|are)(?: already| still)? ((?:on|in) .+)$",
        Pattern::caseless);
    static const Pattern holds(
        "^(?:does|do|has|have|will) (.+?) (?:have|contain|include|hold|list|got)(?: any| the)? (.+)$",
        Pattern::caseless);
    static const Pattern howMany(
        "^(?:how (?:many|much)|(?:what is|what['’]s|tell me) the (?:number|count) of|count(?: the)?)(?: "
        "(?:things?|items?|entries|stuff|events|tasks?|of|different|more|products?|do|i|we|have|are|is|there|got|left|"
        "still|does|remain|open|to|buy|get|in|on))* (?:on|in|does|of|left on)? ?(.+)$",
        Pattern::caseless);
    static const Pattern tail(
        "(?:\\s+(?:already|still|yet|listed|written|written down|down|now|have|hold|contain|there))+$",
        Pattern::caseless);
    static const Pattern thing("^(?:there|anything|something|things?|stuff|items?|everything|all|any|what|more|much|"
                               "anything (?:else|left|outstanding|open)|(?:anything|something|things|items) .*)$",
        Pattern::caseless);
    static const Pattern listMade("^(?:do|did|have|is|are|has)\\s*(?:i|we|there|you)?\\s*(?:have|got|make|made|create|"
                                  "created|start|started|already|an?|any|write|written)\\b\\s*(.+)$",
        Pattern::caseless);
    const std::string asked = tail.replaceAll(text, "");
    if (const auto match = howMany.find(asked)) {
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return of(Kind::count, *std::move(name));
    }
    for (const Pattern* form : {&isOn, &haveOn}) {
        const auto match = form->find(asked);
        const auto parts = match ? ListPhrase::endingIn(match->texts[0], onAny) : std::nullopt;
        if (!parts || parts->before.empty())
            continue;
        return thing.find(parts->before) ? of(Kind::show, parts->list)
                                         : ofItems(Kind::has, parts->list, tail.replaceAll(parts->before, ""));
    }
    if (const auto match = checked.find(asked)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], onOrIn);
        if (parts && parts->before == "x")
            return ofItems(Kind::has, parts->list, match->texts[0]);
    }
    if (const auto match = holds.find(asked)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        if (name)
            return ofItems(Kind::has, *name, match->texts[1]);
    }
    if (const auto match = listMade.find(asked)) {
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return of(Kind::exists, *std::move(name));
    }
    return std::nullopt;
}

Found showing(const std::string& text)
{
    static const Pattern anyLink(ListPhrase::links("on|in|from|to|of|off|inside"), Pattern::caseless);
    static const Pattern lead(
        "^(?:(?:what|which|whats)(?:['’]?s| is| are| was| were| do| does| did| have| has)?|read(?: out| back| "
        "off)?|show|display|see|view|check(?: out)?|open(?: up)?|pull up|bring up"
        "|give|tell|list(?: out)?|get|fetch|find|look (?:at|in|into|up)|go (?:through|over|to)|run "
        "through|recite|say|print|let (?:me|us) (?:see|hear|know|have)|review|i have|i['’]ve got|evaluate|call "
        "up|load|access)(?=\\s)",
        Pattern::caseless);
    static const Pattern between(
        "^(?:\\s*(?:me|us|out|what|which|all|the|of|items?|things?|stuff|contents?|entries|everything|anything|is|are|"
        "was|that|have|has|do|does|did|i|we|got|put|need(?: to "
        "(?:buy|get|do|pack))?|still|currently|already|there|left|else|tasks?|products?|groceries|more|remains?|"
        "remaining|written|listed|added|to|in|on|from|off|inside|for|with|about|today)\\b)+\\s*",
        Pattern::caseless);
    static const Pattern bare("^(?:(?:my|our|the) )(?:\\S+ ){0,4}" + listWord + "$", Pattern::caseless);
    static const Pattern onlyList("^(?:\\S+ ){1,3}" + listWord + "$", Pattern::caseless);
    static const Pattern middle("^(?:can|could) (?:you|i)\\b", Pattern::caseless);
    static const Pattern copula(
        "(?:\\s+(?:is|are|say|says|have|has|contains?|includes?|looks? like|what))+$", Pattern::caseless);
    const std::string asked = copula.replaceAll(text, "");
    const auto start = lead.find(asked);
    if (!start && (bare.find(asked) || onlyList.find(asked))) {
        if (auto name = ListPhrase::nameIn(asked))
            return of(Kind::show, *std::move(name));
    }
    if (!start || middle.find(asked))
        return std::nullopt;
    std::string rest = asked.substr(start->range.end);
    if (const auto filler = between.find(rest))
        rest = rest.substr(filler->range.end);
    if (auto name = ListPhrase::nameIn(rest))
        return of(Kind::show, *std::move(name));
    const auto parts = ListPhrase::endingIn(" " + rest, anyLink);
    static const Pattern idle("^(?:\\w+ ){0,3}\\w*$");
    return parts && idle.find(parts->before) && !ListPhrase::isSentence(parts->before) ? of(Kind::show, parts->list)
                                                                                       : std::nullopt;
}

/// "Bring up the grocery list and add milk", "make a packing list and put socks on it".
Found twoInOne(const std::string& text)
{
    static const Pattern both("^(.+?\\b" + listWord
            + "\\b[^,]*?),? (?:and|then|and then) (add|put|include|write|remove|delete|take|tick|check)(?: off)? (.+)$",
        Pattern::caseless);
    static const Pattern loose(
        "(?:\\s+(?:on|to|in|into|onto|off|from|in to)(?: (?:it|there|that|that list|the list|this list))?)$",
        Pattern::caseless);
    const auto match = both.find(text);
    if (!match)
        return std::nullopt;
    auto first = creation(match->texts[0]);
    if (!first)
        first = showing(match->texts[0]);
    if (!first || !first->items.empty())
        return std::nullopt;
    const std::string verb = RequestText::phrase(match->texts[1]);
    const std::string items = loose.replaceAll(match->texts[2], "");
    const bool adds = verb == "add" || verb == "put" || verb == "include" || verb == "write";
    const Kind kind = !adds           ? (verb == "tick" || verb == "check" ? Kind::tick : Kind::remove)
        : first->kind == Kind::create ? Kind::create
                                      : Kind::add;
    return ofItems(kind, first->list, items);
}

constexpr std::size_t longestRead = 600; ///< Bytes: nobody says more of a list at once, and reading stays quick.

std::string plainCore(std::string_view core)
{
    static const Pattern blanks("\\s+");
    return trimmed(blanks.replaceAll(core, " "), " .!?");
}

} // namespace

ListIntent ListIntent::ofItems(Kind kind, std::string list, const std::string& said)
{
    static const Pattern particle("\\s+(?:off|out|down|away|back)$", Pattern::caseless);
    const std::string items = particle.replaceAll(said, "");
    ListIntent intent{.kind = kind, .list = std::move(list)};
    const bool adds = kind == Kind::add || kind == Kind::create;
    if ((kind == Kind::remove || kind == Kind::clear) && ItemWords::isEverything(items))
        intent.kind = Kind::clear;
    else if (kind == Kind::remove && ItemWords::isTicked(items))
        intent.kind = Kind::clearTicked;
    else if (!ItemWords::isPointing(items))
        intent.items = adds ? ItemWords::split(items) : ItemWords::namedAll(items);
    return intent;
}

std::optional<ListIntent> ListIntent::read(std::string_view core)
{
    static const Pattern hint("list|lsit|\\bto[ -]?dos?\\b|grocer|errands|chores|\\bmy shopping\\b", Pattern::caseless);
    static const Pattern notOurs(
        "^(?:remind|remember|schedule|book|play|call me|text|e-?mail|search|google)\\b|\\bplaylist\\b",
        Pattern::caseless);
    const std::string text = plainCore(core);
    if (text.size() > longestRead || !hint.find(text) || notOurs.find(text))
        return std::nullopt;
    for (const auto reader : {lists, twoInOne, creation, changing, addition, ticking, removal, asking, showing}) {
        if (auto intent = reader(text))
            return intent;
    }
    return std::nullopt;
}

} // namespace quorvell
