// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListChange.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListAddition.h"
#include "Understanding/skills/lists/ListCreation.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListShift.h"

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

/// "Pencil from stationery": a list may be called so; "from friday" is a matter of the calendar.
Found ofOtherName(const std::string& rest)
{
    static const Pattern place("^(?:the |my )?((?:\\w+ ){0,2}items?|items? (?:number )?\\d{1,3}|last thing i (?:just "
                               ")?added)$|^(.+?) (?:from|off|out of) (?:(?:my|the|our|this|that) )?"
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
    static const Pattern emptying("^(?:clear|wipe|empty|clean)\\b", Pattern::caseless);
    static const Pattern verb(
        "^(?:(?:find|open|go to) (.+?) and )?(?:remove|delete|take(?: off| out| "
        "away)?|erase|drop|scratch(?: off| out)?|strike(?: off| out)?"
        "|get rid of|kill|cancel|abolish|eliminate|clear(?: off| out)?|throw out|throw "
        "away|trash|discard|wipe(?: out)?|empty(?: out)?|bin|dump|cut|lose|scrap|ditch|deduct|exclude|omit|off "
        "with|pull|clean(?: up| out)?|cross out|destroy|void|revoke|subtract|withdraw|eject|unlist|unadd|forget(?: "
        "about)?)\\s+",
        Pattern::caseless);
    static const Pattern taking("^(?:take|pull)\\b", Pattern::caseless);
    static const Pattern forgetting("^forget\\b", Pattern::caseless);
    static const Pattern allDuties(
        "^(?:remove|delete|clear|erase|wipe|empty)(?: out)? all(?: of)?(?: my| the| our)* (?:tasks|chores|to do list)$",
        Pattern::caseless);
    static const Pattern oneDuty(
        "^(?:remove|delete|erase) (?:an? |one |my |the )?(?:tasks?|to[ -]?dos?|to[ -]?do item)$", Pattern::caseless);
    static const Pattern needless("^(?:i|we) (?:no longer|do not|don['’]?t) (?:need|want|use) (.+?\\b"
            + ListPhrase::listWord + ")(?: any ?more)?$",
        Pattern::caseless);
    static const Pattern twoLists(
        "^(?:delete|remove|erase|clear|empty)\\b.*\\b(?:list|groceries)(?: and|,) .*\\blist$", Pattern::caseless);
    static const Pattern addsToo("\\b(?:add|put)\\b| (?:from|off) ", Pattern::caseless);
    static const Pattern shoppingOnly("^(?:clear|empty|wipe)(?: out)? (?:my |the )?shopping$", Pattern::caseless);
    if (twoLists.find(text) && !addsToo.find(text)) // one after the other: which one is asked
        return cOf(emptying.find(text) ? Kind::clear : Kind::deleteList, "");
    if (shoppingOnly.find(text))
        return cOf(Kind::clear, "shopping");
    if (allDuties.find(text))
        return cOf(Kind::clear, "to do");
    if (oneDuty.find(text))
        return cOf(Kind::remove, "to do");
    if (const auto match = needless.find(text))
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return ListIntent{.kind = Kind::deleteList, .list = *name, .isOnlyTold = !name->empty()};
    static const Pattern anew("^(?:(?:wipe|clear|empty) (.+?) (?:clean|out|completely)|reset (.+)|(?:start|begin) "
                              "(.+?) (?:over|again|from scratch|anew))$",
        Pattern::caseless);
    static const Pattern passive("^(.+?) (?:should|must|needs? to|has to|have to|can) (?:be |get )?(?:not be "
                                 "on|removed|deleted|taken (?:away|off|out)|erased|go|gone)(?: away)?"
                                 "(?= (?:from|off|out of))(.+)$",
        Pattern::caseless);
    static const Pattern off("^(?!what|which|tick|check|cross|mark|i |is |are )(?:get |have )?(.+?)(?: "
                             "(?:needs?|should|must|has|have|ought)(?: "
                             "to)? (?:come|be|go|get))? off (?:of )?(.+)$",
        Pattern::caseless);
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
        static const Pattern fromList("^(?:from|off|out of|off of) (?=\\S)", Pattern::caseless);
        if (const auto lead = fromList.find(rest))
            if (auto name = ListPhrase::nameIn(rest.substr(lead->range.end)))
                return cOf(Kind::remove, *std::move(name));
        if (ItemWords::isTicked(rest))
            return cOf(Kind::clearTicked, "");
        static const Pattern allItems("^all(?: of)?(?: my| the)* items$", Pattern::caseless);
        if (allItems.find(rest))
            return cOf(Kind::clear, "");
        static const Pattern byPlace(
            "^" + ListPhrase::listWord + " (?:number |no\\.? ?|#)?(?:\\d+|one|two|three|four|five)$",
            Pattern::caseless);
        const auto name = byPlace.find(rest) ? std::optional<std::string>("") : ListPhrase::nameIn(rest);
        if (!name)
            return ofOtherName(rest);
        static const Pattern several("\\blists$", Pattern::caseless);
        static const Pattern both("\\band\\b", Pattern::caseless);
        if (several.find(rest) && both.find(*name)) // one after the other: which one is asked
            return cOf(emptying.find(text) ? Kind::clear : Kind::deleteList, "");
        static const Pattern some(
            "\\b(?:old|previous|other|last|latest|unused|empty|some|two|three|few|second)\\b", Pattern::caseless);
        if (several.find(rest) && name->empty() && some.find(rest))
            return cOf(Kind::deleteList, "");
        if (several.find(rest) && name->empty())
            return cOf(emptying.find(text) ? Kind::clearAll : Kind::deleteAll, "");
        return emptying.find(text) ? cOf(Kind::clear, *name)
            : taking.find(text)
            ? std::nullopt
            : Found(ListIntent{
                .kind = Kind::deleteList, .list = *name, .isOnlyTold = forgetting.find(text) && !name->empty()});
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
    static const Pattern whole(
        "^(?:mark|tick|check|cross)(?: off)? (?:(?:all|everything)(?: items?| things?)? (?:on|in) )?(.+?\\b"
            + ListPhrase::listWord + ") (?:off|(?:as |is )?(?:all )?(?:done|complete|completed|finished|bought))$"
            + "|^(?:mark|tick|check|cross)(?: off)? (?:all|everything)(?: items?| things?)? (?:on|in) (.+?\\b"
            + ListPhrase::listWord + ")(?: off)?$",
        Pattern::caseless);
    if (const auto match = whole.find(text))
        if (auto name = ListPhrase::nameIn(match->texts[0] + match->texts[1]))
            return ListIntent{.kind = Kind::tick, .list = *std::move(name), .items = {"#all"}};
    // "Check bread in the list" wants to know.
    static const Pattern looking("^check (?!(?:off|if|whether|that|for)\\b)(.+) in (.+)$", Pattern::caseless);
    if (const auto match = looking.find(text))
        if (const auto name = ListPhrase::nameIn(match->texts[1]);
            name && !ListPhrase::endingIn(match->texts[0], links))
            return cOfItems(Kind::has, *name, match->texts[0]);
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
    static const Pattern swapped("^(?:change|replace|swap|substitute|exchange|turn|rename|edit|update|correct) (.+?) "
                                 "(?:to|with|for|by|into) (.+?) (?:on|in|from|of) (.+)$",
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
    static const Pattern untitled(
        "^(?:re-?name|retitle|change (?:the )?(?:name|title) of) (.+)$|^change (?:the )?(list) (?:name|title)$",
        Pattern::caseless);
    static const Pattern duties("\\bto[ -]do\\b", Pattern::caseless); // no link
    const std::string glued = duties.replaceAll(text, "todo");
    static const Pattern listTo(
        "^change (.+?\\b" + ListPhrase::listWord + ")(?: name)? (?:to|into) (.+)$", Pattern::caseless);
    if (const auto match = listTo.find(glued); match && !named.find(glued))
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return ListIntent{
                .kind = Kind::rename, .list = *std::move(name), .title = ListPhrase::withoutEnds(match->texts[1])};
    if (const auto match = named.find(glued) ? std::nullopt : untitled.find(text))
        if (auto name = ListPhrase::nameIn(match->texts[0] + match->texts[1]))
            return cOf(Kind::rename, *std::move(name));
    if (const auto match = named.find(glued)) {
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
    for (const auto reader : {ListCreation::read, ListShift::read, changing, ListAddition::read, ticking, removal}) {
        if (auto intent = reader(text))
            return intent;
    }
    return std::nullopt;
}

} // namespace quorvell
