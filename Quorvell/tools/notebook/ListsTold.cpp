// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/ListsTold.h"

#include "QuorvellCore/notebook/CheckList.h"
#include "QuorvellCore/notebook/ListEdit.h"
#include "QuorvellCore/notebook/ListWords.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr std::size_t mostLists = 50; ///< That are told at once.

/// Those that are open, as far as anybody would have all lists told.
Json openItems(const CheckList& list)
{
    constexpr std::size_t mostItems = 12;
    Json items = Json::array();
    for (const CheckListItem& item : list.items())
        if (!item.isTicked && items.size() < mostItems)
            items.push_back(item.text);
    return items;
}

/// Where that stands.
Json placesOf(const Note& note, const std::string& words)
{
    Json places = Json::array();
    const CheckList list(note.body);
    for (const std::size_t place : ListEdit::named(list, words))
        places.push_back({{"id", note.id}, {"name", ListWords::spoken(note.title)}, {"text", list.items()[place].text},
            {"ticked", list.items()[place].isTicked}});
    return places;
}

} // namespace

Json ListsTold::described(const Note& note)
{
    const CheckList list(note.body);
    Json shown{{"id", note.id}, {"title", note.title}, {"name", ListWords::spoken(note.title)},
        {"open", list.openItems()}, {"ticked", list.items().size() - list.openItems()}};
    if (isUntrusted(note.origin))
        shown["untrusted"] = true;
    return shown;
}

Json ListsTold::described(const std::vector<Note>& lists)
{
    Json shown = Json::array();
    for (const Note& list : lists)
        if (shown.size() < mostLists)
            shown.push_back(described(list));
    return shown;
}

ToolResult ListsTold::all(const std::vector<Note>& lists, bool withItems)
{
    Json shown = described(lists);
    for (std::size_t place = 0; withItems && place < shown.size(); ++place)
        shown[place]["items"] = openItems(CheckList(lists[place].body));
    return ToolResult(ToolStatus::lists).add("count", lists.size()).add("lists", shown);
}

ToolResult ListsTold::holding(const std::vector<Note>& lists, const Texts& items)
{
    Json held = Json::array();
    Json missing = Json::array();
    for (const std::string& words : items) {
        const std::size_t before = held.size();
        for (const Note& list : lists)
            for (Json& place : placesOf(list, words))
                held.push_back(std::move(place));
        if (held.size() == before)
            missing.push_back(words);
    }
    return all(lists, false).add("held", held).add("missing", missing);
}

ToolResult ListsTold::which(const std::vector<Note>& lists)
{
    constexpr std::size_t mostNamed = 4;
    Texts names;
    for (const Note& list : lists)
        if (names.size() < mostNamed)
            names.push_back(ListWords::spoken(list.title));
    if (lists.size() > mostNamed)
        names.push_back("another one");
    const std::string question = lists.size() == 1 ? "Do you mean your " + names.front() + "?"
                                                   : "Which list do you mean: " + eitherOf(names) + "?";
    return ToolResult(ToolStatus::whichList).ask(question).add("lists", described(lists));
}

ToolResult ListsTold::none(const ListRequest& request, const std::vector<Note>& lists)
{
    ToolResult result(ToolStatus::noList);
    if (!request.name.empty())
        result.add("list", request.name).add("name", ListWords::spoken(request.name));
    result.add("lists", described(lists));
    return result.advise("There is no such list. Ask whether you should make it, with create.");
}

void ListsTold::addElsewhere(ToolResult& result, const std::vector<Note>& lists, const Note& but, const Texts& items)
{
    Json places = Json::array();
    for (const Note& list : lists)
        for (const std::string& words : items)
            if (list.id != but.id && !words.starts_with('#'))
                for (Json& place : placesOf(list, words))
                    places.push_back(std::move(place));
    if (!places.empty())
        result.add("elsewhere", places);
}

std::string ListsTold::eitherOf(const Texts& texts)
{
    std::string said;
    for (std::size_t index = 0; index < texts.size(); ++index)
        said += (index == 0 ? "" : index + 1 == texts.size() ? " or " : ", ") + texts[index];
    return said;
}

} // namespace quorvell
