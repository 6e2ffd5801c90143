// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListChange.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListAddition.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

Found cOf(Kind kind, std::string list)
{
    return ListIntent{.kind = kind, .list = std::move(list)};
}

Found cOfItems(Kind kind, std::string list, const std::string& items)
{
    return ListIntent::ofItems(kind, std::move(list), items);
}

/// "A list for the party", with what is to be on it.
Found created(const std::string& phrase)
{
    static const Pattern filled("^(.*?\\b" + ListPhrase::listWord
            + "(?:\\s.*?)?)[,:]?\\s+(?:(?:starting |beginning )?with(?! (?:my|our|(?:the |a "
              ")?(?:name|title))\\b)|including|containing|that (?:has|says)|and (?:add|put)|having)"
              "(?: the)? (.+)$",
        Pattern::caseless);
    static const Pattern colon("^(.*?\\b" + ListPhrase::listWord + "[^:]*):\\s*(.+)$", Pattern::caseless);
    static const Pattern loose("(?:\\s+(?:on|to|in) (?:it|there))$", Pattern::caseless);
    static const Pattern moment(" (?:to be created )?(?:by|at|before) \\d.*$", Pattern::caseless);
    static const Pattern naming(
        "^(.+?),? (?:and )?(?:call|name|title|label) (?:it|that|this|the list)(?: as)? (.+)$", Pattern::caseless);
    if (const auto match = naming.find(phrase); match && ListPhrase::nameIn(match->texts[0]))
        return cOf(Kind::create, ListPhrase::withoutEnds(match->texts[1]));
    for (const Pattern* form : {&filled, &colon}) {
        const auto match = form->find(phrase);
        const auto name = match ? ListPhrase::nameIn(match->texts[0]) : std::nullopt;
        if (name)
            return cOfItems(Kind::create, *name, loose.replaceAll(match->texts[1], ""));
    }
    const auto name = ListPhrase::nameIn(moment.replaceAll(phrase, ""));
    if (name)
        return cOf(Kind::create, *name);
    // "List groceries", "list milk, eggs and tea"
    static const Pattern bare("^(?:an? |the |my )?(?:new )?" + ListPhrase::listWord
            + "[,:]? (?!(?:of|for|called|named|with|that|by|at|in|on|to|and|from|about|is|my|the|all)\\b)(.+)$",
        Pattern::caseless);
    const auto named = bare.find(phrase);
    if (!named)
        return std::nullopt;
    const std::string said = ListPhrase::withoutEnds(named->texts[0]);
    constexpr std::ptrdiff_t mostBlanks = 3; ///< Of a name.
    const bool isName = std::ranges::count(said, ' ') <= mostBlanks && ItemWords::split(said).size() == 1
        && !ListPhrase::isSentence(said) && !ListPhrase::isKeptElsewhere(said);
    if (isName)
        return cOf(Kind::create, said);
    return ItemWords::split(said).size() > 1 ? cOfItems(Kind::create, "", said) : std::nullopt;
}

Found creation(const std::string& text)
{
    static const Pattern make(
        "^(?:create|make|start|begin|set up|setup|build|prepare|compose|generate|draw up|put together"
        "|write(?: up)?|write me|open up|form|initiate|produce|craft|keep(?= an? )|maintain(?= an? )|set(?= an? "
        ".*\\blist))(?: me| "
        "us| for me| for us)?\\s+(?=\\S)",
        Pattern::caseless);
    static const Pattern wanted(
        "^(?:(?:i(?:['’]d| would)? )?(?:need|want|like)|have|get(?: me)?|open|bring up|show(?: me)?|give me|do|let me "
        "have)\\s+"
        "(?=(?:an?|one|another|the)?\\s*(?:brand[ -])?new\\s|(?<=need |want |like )(?:an?|one|another)\\s)",
        Pattern::caseless);
    static const Pattern fresh(
        "^(?:an? )?(?:brand[ -])?new\\s+(?=.*\\b" + ListPhrase::listWord + "\\b)", Pattern::caseless);
    static const Pattern isNew(
        "^(?:an? |another )?(?:brand[ -])?new\\b|^(?:an?|another) (?:\\S+ ){0,3}" + ListPhrase::listWord + "\\b",
        Pattern::caseless);
    if (const auto match = make.find(text)) {
        static const Pattern sure("^sure\\b", Pattern::caseless);
        const std::string rest = text.substr(match->range.end);
        return sure.find(rest) ? std::nullopt : created(rest);
    }
    if (const auto match = wanted.find(text); match && isNew.find(text.substr(match->range.end)))
        return created(text.substr(match->range.end));
    static const Pattern behind("^(?!(?:add|put|what|which|is|are|do|show|read|open|delete|remove|clear|find|on|to)\\b)"
                                "(.+?)[,:]? (?:as )?(?:an? )?new "
            + ListPhrase::listWord + "$",
        Pattern::caseless);
    static const Pattern before("^" + ListPhrase::listWord + ":\\s*(.+)$", Pattern::caseless);
    static const Pattern filled("^" + ListPhrase::listWord + " (?:for|of) ([^:,]{2,40}):\\s*(.+)$", Pattern::caseless);
    if (const auto match = filled.find(text))
        return cOfItems(Kind::create, match->texts[0], match->texts[1]);
    if (const auto match = before.find(text))
        return cOfItems(Kind::create, "", match->texts[0]);
    const auto match = behind.find(text);
    if (match && !ListPhrase::isSentence(match->texts[0]) && !ListPhrase::isKeptElsewhere(match->texts[0]))
        return cOf(Kind::create, match->texts[0]);
    return fresh.find(text) ? created(text) : std::nullopt;
}

/// "Pencil from stationery": a list may be called so; "from friday" is a matter of the calendar.
Found ofOtherName(const std::string& rest)
{
    static const Pattern place(
        "^(?:the )?((?:\\w+ ){0,2}item)$|^(.+?) (?:from|off|out of) (?:(?:my|the|our|this|that) )?"
        "((?:[\\p{L}'’]+ ){0,3}[\\p{L}'’]+)$",
        Pattern::caseless);
    static const Pattern matters(
        "\\b(?:\\w+day|\\w*day['’]?s|tomorrow\\w*|tonight|weekends?|weeks?|months?|years?|morning|noon|"
        "afternoon|evening|night|january|february|march|april|may|june|july|august|september|october|"
        "november|december|meetings?|appointments?|events?|part(?:y|ies)|dinner|lunch|breakfast|brunch|"
        "call|trip|computer|phone|screen|desktop|system|memory|here|there|now|it|them|us|me|him|her|"
        "all|everything|\\d+)\\b",
        Pattern::caseless);
    static const Pattern others("\\b(?:meetings?|appointments?|events?|reminders?|alarms?|timers?|notes?|invitations?|"
                                "birthdays?|songs?|emails?|files?|photos?|contacts?|wake[ -]?up\\w*|recurring)\\b",
        Pattern::caseless);
    const auto match = place.find(rest);
    if (!match)
        return std::nullopt;
    if (!match->texts[0].empty()) // "the first item"
        return cOfItems(Kind::remove, "", match->texts[0]);
    const std::string& name = match->texts[2];
    if (matters.find(name) || others.find(match->texts[1]) || ListPhrase::isKeptElsewhere(name)
        || ListPhrase::isSentence(name))
        return std::nullopt;
    return cOfItems(Kind::remove, name, match->texts[1]);
}

Found removal(const std::string& text)
{
    static const Pattern verb(
        "^(?:(?:find|open|go to) (.+?) and )?(?:remove|delete|take(?: off| out| "
        "away)?|erase|drop|scratch(?: off| out)?|strike(?: off| out)?"
        "|get rid of|kill|cancel|abolish|eliminate|clear(?: off| out)?|throw out|throw "
        "away|trash|discard|wipe(?: out)?|empty(?: out)?|bin|dump|cut|lose|scrap|ditch|deduct|exclude|omit|off "
        "with|pull|clean(?: up| out)?)\\s+",
        Pattern::caseless);
    static const Pattern taking("^(?:take|scratch|strike|pull|drop)\\b", Pattern::caseless);
    static const Pattern emptying("^(?:clear|wipe|empty|clean)\\b", Pattern::caseless);
    static const Pattern anew("^(?:(?:wipe|clear|empty) (.+?) (?:clean|out|completely)|reset (.+)|(?:start|begin) "
                              "(.+?) (?:over|again|from scratch|anew))$",
        Pattern::caseless);
    static const Pattern passive("^(.+?) (?:should|must|needs? to|has to|have to|can) (?:be |get )?(?:not be "
                                 "on|removed|deleted|taken (?:away|off|out)|erased|go|gone)(?: away)?"
                                 "(?= (?:from|off|out of))(.+)$",
        Pattern::caseless);
    static const Pattern off(
        "^(?!what|which|tick|check|cross|mark|i |is |are )(.+?) off (?:of )?(.+)$", Pattern::caseless);
    static const Pattern links(ListPhrase::links("from|off of|off from|off|out of|on|in|at|of"), Pattern::caseless);
    if (const auto match = anew.find(text)) {
        for (const std::string& list : match->texts)
            if (auto name = list.empty() ? std::nullopt : ListPhrase::nameIn(list))
                return cOf(Kind::clear, *std::move(name));
    }
    if (const auto match = verb.find(text)) {
        const std::string rest = text.substr(match->range.end);
        if (!match->texts[0].empty()) {
            const auto name = ListPhrase::nameIn(match->texts[0]);
            return name ? cOfItems(Kind::remove, *name, rest) : std::nullopt;
        }
        static const Pattern fromAll("\\ball(?: of)?(?: my| the| our)? lists$", Pattern::caseless);
        if (const auto parts = ListPhrase::itemsIn(rest, links); parts && !parts->before.empty()) {
            auto intent = cOfItems(Kind::remove, parts->list, parts->before);
            if (fromAll.find(rest) && intent->kind == Kind::clear)
                intent->kind = Kind::clearAll;
            return intent;
        }
        static const Pattern byPlace("^" + ListPhrase::listWord + " (?:number |no\\.? ?|#)?\\d+$", Pattern::caseless);
        const auto name = byPlace.find(rest) ? std::optional<std::string>("") : ListPhrase::nameIn(rest);
        if (!name)
            return ofOtherName(rest);
        static const Pattern several("\\blists$", Pattern::caseless);
        static const Pattern both("\\band\\b", Pattern::caseless);
        if (several.find(rest) && both.find(*name)) // one after the other: which one is asked
            return cOf(emptying.find(text) ? Kind::clear : Kind::deleteList, "");
        if (several.find(rest) && name->empty())
            return cOf(emptying.find(text) ? Kind::clearAll : Kind::deleteAll, "");
        return emptying.find(text) ? cOf(Kind::clear, *name)
            : taking.find(text)    ? std::nullopt
                                   : cOf(Kind::deleteList, *name);
    }
    // "My list should no longer have eggs"
    static const Pattern without("^(.+?\\b" + ListPhrase::listWord
            + ") (?:should|must|need|needs to|has to|does|do|can)(?:n['’]?t| not| no longer| never)(?: need to| have "
              "to| any "
              "more)? (?:contain|have|include|hold|need|show)(?: any| the)? (.+)$",
        Pattern::caseless);
    if (const auto match = without.find(text))
        if (const auto name = ListPhrase::nameIn(match->texts[0]))
            return cOfItems(Kind::remove, *name, match->texts[1]);
    if (const auto match = passive.find(text)) {
        const auto parts = ListPhrase::endingIn("x" + match->texts[1], links);
        if (parts && parts->before == "x")
            return cOfItems(Kind::remove, parts->list, match->texts[0]);
    }
    if (const auto match = off.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[1]);
        static const Pattern leads("^(?:cross|tick|check)\\b", Pattern::caseless);
        if (name && !leads.find(text))
            return cOfItems(Kind::remove, *name, match->texts[0]);
    }
    return std::nullopt;
}

Found ticking(const std::string& text)
{
    static const Pattern undone(
        "^(?:untick|uncheck|unmark|uncross|un-tick|un-check) (.+?)(?: (?:on|from|off) (.+))?$", Pattern::caseless);
    static const Pattern verb("^(?:tick|check|cross|mark|strike through)(?: off)? "
                              "(?!(?:if|whether|that|for|out|to|in|on|my|the list)\\b)(.+)$",
        Pattern::caseless);
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
        return name ? cOfItems(Kind::untick, *name, match->texts[0]) : std::nullopt;
    }
    static const Pattern out("^out\\b", Pattern::caseless);
    for (const Pattern* form : {&verb, &bought}) {
        const auto match = form->find(text);
        const auto parts =
            match && !out.find(match->texts[0]) ? ListPhrase::endingIn(match->texts[0], links) : std::nullopt;
        if (parts && !parts->before.empty())
            return cOfItems(Kind::tick, parts->list, done.replaceAll(parts->before, ""));
    }
    if (const auto match = isDone.find(text)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], links);
        if (parts && parts->before == "x")
            return cOfItems(Kind::tick, parts->list, match->texts[0]);
    }
    return std::nullopt;
}

Found changing(const std::string& text)
{
    static const Pattern named(
        "^(?:re-?name|retitle|change the (?:name|title) of) (.+?)(?: from .+?)? (?:to|as|into|in to) (.+)$"
        "|^(?:re-?name|call) (.+\\b"
            + ListPhrase::listWord + ") (?:instead |simply |just )?(.+)$",
        Pattern::caseless);
    static const Pattern swappedThere("^(?:change|replace|swap|turn|make) (.+?) (?:on|in) (.+?\\b"
            + ListPhrase::listWord + ") (?:to|with|for|by|into) (.+)$",
        Pattern::caseless);
    static const Pattern swapped(
        "^(?:change|replace|swap|substitute|exchange|turn) (.+?) (?:to|with|for|by|into) (.+?) (?:on|in|from|of) (.+)$",
        Pattern::caseless);
    static const Pattern onList("^(?:on|in) (.+?\\b" + ListPhrase::listWord
            + ")[,]? (?:change|replace|swap) (.+?) (?:to|with|for|by|into) (.+)$",
        Pattern::caseless);
    const auto replacing = [](const std::string& list, const std::string& from, const std::string& to) -> Found {
        const auto name = ListPhrase::nameIn(list);
        const auto old = ItemWords::namedAll(from);
        if (!name || old.empty())
            return std::nullopt;
        return ListIntent{
            .kind = Kind::replace, .list = *name, .items = {old.front(), ItemWords::one(ListPhrase::withoutEnds(to))}};
    };
    if (const auto match = swapped.find(text))
        if (auto intent = replacing(match->texts[2], match->texts[0], match->texts[1]))
            return intent;
    if (const auto match = swappedThere.find(text))
        if (auto intent = replacing(match->texts[1], match->texts[0], match->texts[2]))
            return intent;
    if (const auto match = onList.find(text))
        if (auto intent = replacing(match->texts[0], match->texts[1], match->texts[2]))
            return intent;
    if (const auto match = named.find(text)) {
        const std::size_t form = match->texts[0].empty() ? 2 : 0;
        const auto name = ListPhrase::nameIn(match->texts[form]);
        const std::string title = ListPhrase::withoutEnds(match->texts[form + 1]);
        if (name && !title.empty())
            return ListIntent{.kind = Kind::rename, .list = *name, .title = title};
    }
    return std::nullopt;
}

} // namespace

std::optional<ListIntent> ListChange::read(const std::string& text)
{
    for (const auto reader : {creation, changing, ListAddition::read, ticking, removal}) {
        if (auto intent = reader(text))
            return intent;
    }
    return std::nullopt;
}

} // namespace quorvell
