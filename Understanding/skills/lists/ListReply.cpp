// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListReply.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

using Texts = std::vector<std::string>;

std::size_t number(const Json& object, std::string_view key)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(readInteger(object, key).value_or(0), 0));
}

Texts textsIn(const Json& object, std::string_view key)
{
    return readStrings(object, key).value_or(Texts{});
}

std::string enumerated(const Texts& texts, const std::string& last)
{
    std::string said;
    for (std::size_t index = 0; index < texts.size(); ++index)
        said += (index == 0 ? "" : index + 1 == texts.size() ? last : ", ") + texts[index];
    return said;
}

std::string isOrAre(const Texts& texts)
{
    // Of one thing, "eggs" are many.
    const bool isMany =
        texts.size() > 1 || (texts.size() == 1 && texts.front().ends_with('s') && !texts.front().ends_with("ss"));
    return isMany ? " are" : " is";
}

std::string sentence(const std::string& text)
{
    return withUpperCaseFirst(text) + ".";
}

/// The items of a result that are ticked, or those that are not.
Texts itemsOf(const ToolResult& result, bool isTicked)
{
    Texts texts;
    const Json* items = result.list("items");
    for (const Json& item : items ? *items : Json::array())
        if (readBool(item, "ticked").value_or(false) == isTicked)
            if (auto text = readString(item, "text"))
                texts.push_back(*std::move(text));
    return texts;
}

} // namespace

std::string ListReply::joined(const Texts& texts)
{
    return enumerated(texts, " and ");
}

std::string ListReply::eitherOf(const Texts& texts)
{
    return enumerated(texts, " or ");
}

std::string ListReply::amount(std::size_t count)
{
    return count == 0 ? "nothing" : count == 1 ? "one thing" : std::to_string(count) + " things";
}

std::string ListReply::name(const ToolResult& result)
{
    return result.string("name").value_or("list");
}

Texts ListReply::texts(const ToolResult& result, std::string_view key)
{
    return textsIn(result.json(), key);
}

std::string ListReply::lists(const ToolResult& result)
{
    const Json* lists = result.list("lists");
    const std::size_t count = std::max(number(result.json(), "count"), lists ? lists->size() : 0);
    if (count == 0 || !lists || lists->empty())
        return "You have no lists yet. Say for example: make a shopping list.";
    Texts names;
    for (const Json& list : *lists) {
        if (names.size() == mostTold)
            break;
        const std::size_t open = number(list, "open");
        const bool isTicked = open == 0 && number(list, "ticked") > 0;
        names.push_back("your " + readString(list, "name").value_or("list")
            + (isTicked ? ", all ticked off" : ", with " + amount(open) + " on it"));
    }
    if (count == 1)
        return "You have one list: " + names.front() + ".";
    std::string said = "You have " + std::to_string(count) + " lists: ";
    for (std::size_t index = 0; index < names.size(); ++index)
        said += (index == 0 ? "" : index + 1 == names.size() && names.size() == count ? "; and " : "; ") + names[index];
    return said + (names.size() < count ? "; and " + std::to_string(count - names.size()) + " more." : ".");
}

std::string ListReply::each(const ToolResult& result)
{
    constexpr std::size_t mostLists = 5; ///< More nobody listens to: their names are told.
    constexpr std::size_t mostItems = 6; ///< Of each.
    const Json* lists = result.list("lists");
    if (!lists || lists->size() > mostLists || lists->empty())
        return ListReply::lists(result);
    std::string said = lists->size() == 1 ? "" : "You have " + std::to_string(lists->size()) + " lists.";
    for (const Json& list : *lists) {
        Texts items = textsIn(list, "items");
        const std::size_t open = std::max(number(list, "open"), items.size());
        items.resize(std::min(items.size(), mostItems));
        if (open > items.size())
            items.push_back(std::to_string(open - items.size()) + " more");
        const std::string name = "your " + readString(list, "name").value_or("list");
        const bool isTicked = open == 0 && number(list, "ticked") > 0;
        said += (said.empty() ? "" : " ")
            + (isTicked         ? "Everything on " + name + " is ticked off."
                    : open == 0 ? "There is nothing on " + name + "."
                                : "On " + name + ": " + joined(items) + ".");
    }
    return said;
}

std::string ListReply::pronoun(const Texts& items)
{
    return isOrAre(items) == " are" ? "them" : "it";
}

std::string ListReply::standing(const Texts& items, const std::string& where)
{
    return sentence(joined(items) + isOrAre(items) + " " + where);
}

std::string ListReply::heldAnywhere(const ToolResult& result)
{
    std::string said;
    const Json* held = result.list("held");
    for (const Json& item : held ? *held : Json::array()) {
        const bool isTicked = readBool(item, "ticked").value_or(false);
        const std::string where =
            "on your " + readString(item, "name").value_or("list") + (isTicked ? ", ticked off" : "");
        const std::string told = standing({readString(item, "text").value_or("")}, where);
        said += said.empty() ? "Yes. " + told : " " + told;
    }
    const Texts missing = texts(result, "missing");
    if (!missing.empty())
        said += (said.empty() ? "No. " : " ") + standing(missing, "on none of your lists");
    return said;
}

std::string ListReply::list(const ToolResult& result, ListTalk& talk)
{
    const Texts open = itemsOf(result, false);
    const Texts ticked = itemsOf(result, true);
    const std::size_t openCount = std::max(number(result.json(), "open"), open.size());
    talk.items = open;
    talk.items.insert(talk.items.end(), ticked.begin(), ticked.end());
    talk.items.resize(std::min(talk.items.size(), ListTalk::mostItems));
    const std::string on = " on your " + name(result);
    if (open.empty() && ticked.empty()) {
        talk.told = 0;
        return "There is nothing" + on + ".";
    }
    talk.told = std::min(open.size(), mostTold);
    const Texts first(open.begin(), open.begin() + static_cast<std::ptrdiff_t>(talk.told));
    std::string said;
    if (open.empty())
        said = "Everything" + on + " is ticked off";
    else if (talk.told < openCount)
        said = "There are " + amount(openCount) + on + ". The first " + std::to_string(talk.told)
            + " are: " + joined(first) + ". Say \"the rest\" for more";
    else
        said = (openCount == 1 ? "There is " : "There are ") + amount(openCount) + on + ": " + joined(first);
    if (talk.told < open.size() || ticked.empty())
        return said + ".";
    talk.told += std::min(ticked.size(), mostTold);
    const bool areAll = ticked.size() <= mostTold;
    return said + ". Ticked off" + (areAll ? ": " + joined(ticked) : " are " + amount(ticked.size())) + ".";
}

std::string ListReply::rest(ListTalk& talk)
{
    if (talk.told >= talk.items.size())
        return "That was all of it.";
    const std::size_t end = std::min(talk.told + mostTold, talk.items.size());
    const Texts next(talk.items.begin() + static_cast<std::ptrdiff_t>(talk.told),
        talk.items.begin() + static_cast<std::ptrdiff_t>(end));
    talk.told = end;
    return sentence(joined(next)) + (end < talk.items.size() ? " Say \"the rest\" for more." : "");
}

std::string ListReply::held(const ToolResult& result, const std::vector<std::string>& asked)
{
    if (asked.size() == 1 && asked.front().starts_with('#')) {
        const Json* items = result.list("held");
        const auto text = items && items->size() == 1 ? readString(items->front(), "text") : std::nullopt;
        const std::size_t all = number(result.json(), "open") + number(result.json(), "ticked");
        return text ? "It is " + *text + "."
                    : "There " + std::string(all == 1 ? "is only " : "are only ") + amount(all) + " on your "
                + name(result) + ".";
    }
    Texts open;
    Texts ticked;
    const Json* held = result.list("held");
    for (const Json& item : held ? *held : Json::array())
        (readBool(item, "ticked").value_or(false) ? ticked : open).push_back(readString(item, "text").value_or(""));
    const Texts missing = texts(result, "missing");
    std::string said;
    if (!open.empty())
        said = "Yes, " + joined(open) + isOrAre(open) + " on your " + name(result) + ".";
    if (!ticked.empty())
        said += (said.empty() ? "Yes, on your " + name(result) + ": " + joined(ticked)
                              : " " + withUpperCaseFirst(joined(ticked)))
            + isOrAre(ticked) + " ticked off.";
    if (!missing.empty())
        said += (said.empty() ? "No, " + joined(missing) : " " + withUpperCaseFirst(joined(missing))) + isOrAre(missing)
            + " not on your " + name(result) + ".";
    const Json* elsewhere = result.list("elsewhere");
    for (const Json& item : elsewhere ? *elsewhere : Json::array())
        said += " "
            + standing({readString(item, "text").value_or("")}, "on your " + readString(item, "name").value_or("list"));
    return said;
}

std::string ListReply::count(const ToolResult& result)
{
    const std::size_t open = number(result.json(), "open");
    const std::size_t ticked = number(result.json(), "ticked");
    const std::string said = (open > 1 ? "There are " : "There is ") + amount(open) + " on your " + name(result);
    return said + (ticked > 0 ? ", and " + amount(ticked) + " ticked off." : ".");
}

std::string ListReply::made(const ToolResult& result)
{
    const Texts added = texts(result, "added");
    return "I made your " + name(result) + (added.empty() ? "." : ", with " + joined(added) + ".");
}

std::string ListReply::done(const ToolResult& result)
{
    const std::string list = "your " + name(result);
    if (result.status() == ToolStatus::kept)
        return "made " + list;
    if (result.status() == ToolStatus::deleted)
        return "deleted " + list;
    if (result.status() != ToolStatus::changed)
        return "";
    if (const auto was = result.string("was"))
        return "renamed your " + *was + " to " + result.string("title").value_or(name(result));
    const Texts replaced = texts(result, "replaced");
    const Texts removed = texts(result, "removed");
    Texts parts;
    const auto add = [&parts](const Texts& items, const std::string& before, const std::string& behind) {
        constexpr std::size_t mostNamed = 20; // more nobody listens to
        if (!items.empty())
            parts.push_back(before + (items.size() > mostNamed ? amount(items.size()) : joined(items)) + behind);
    };
    add(texts(result, "added"), "added ", " to " + list);
    add(texts(result, "again"), "put ", " back on " + list);
    add(texts(result, "ticked"), "ticked off ", " on " + list);
    add(texts(result, "unticked"), "took the tick off ", " on " + list);
    add(removed, "took ", " off " + list);
    if (replaced.size() == 2)
        parts.push_back("changed " + replaced.front() + " to " + replaced.back() + " on " + list);
    return joined(parts);
}

std::string ListReply::changed(const ToolResult& result, std::string_view already)
{
    constexpr std::size_t many = 3; // so many are worth a word on how to get them back
    const std::string acts = done(result);
    std::string said = acts.empty() ? "" : "I " + acts + ".";
    const auto tell = [&](const Texts& items, const std::string& what) {
        if (!items.empty())
            said += (said.empty() ? "" : " ") + withUpperCaseFirst(joined(items)) + isOrAre(items) + what;
    };
    const std::string where = " on your " + name(result) + ".";
    tell(texts(result, "already"),
        " already " + (already == "there" && said.empty() ? where.substr(1) : std::string(already) + "."));
    tell(texts(result, "missing"), " not" + where);
    if (texts(result, "removed").size() >= many)
        said += " Say \"undo that\" if you want them back.";
    return said.empty() ? "There was nothing to change" + where : said;
}

std::string ListReply::notOnList(const ToolResult& result)
{
    Texts missing = texts(result, "missing");
    if (missing.empty())
        return "Nothing is ticked off on your lists.";
    for (std::string& words : missing)
        if (words.starts_with('#'))
            return "There "
                + std::string(number(result.json(), "open") + number(result.json(), "ticked") == 1 ? "is" : "are")
                + " only " + amount(number(result.json(), "open") + number(result.json(), "ticked")) + " on your "
                + name(result) + ".";
    const std::string where = result.string("name") ? "your " + name(result) : "any of your lists";
    return "I find no " + joined(missing) + " on " + where + ", so nothing was changed.";
}

} // namespace quorvell
