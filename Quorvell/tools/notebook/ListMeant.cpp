// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/ListMeant.h"

#include "Quorvell/tools/notebook/ListsTold.h"
#include "QuorvellCore/notebook/CheckList.h"
#include "QuorvellCore/notebook/ListEdit.h"

#include <algorithm>
#include <iterator>

namespace quorvell {

namespace {

using ItemTexts = std::vector<std::string>;

/// What is named of items that should be there already.
ItemTexts itemsNamed(const ListRequest& request)
{
    ItemTexts names = request.has;
    for (const ItemTexts* texts :
        {&request.edit.tick, &request.edit.untick, &request.edit.remove, &request.edit.keepOnly})
        names.insert(names.end(), texts->begin(), texts->end());
    if (!request.edit.replace.empty())
        names.push_back(request.edit.replace);
    return names;
}

/// Those lists on which most of what is named stands.
std::vector<Note> holdingMost(const std::vector<Note>& lists, const ItemTexts& names)
{
    std::vector<Note> holding;
    std::ptrdiff_t most = 1;
    for (const Note& note : lists) {
        const CheckList list(note.body);
        const auto held = std::ranges::count_if(
            names, [&](const std::string& words) { return !ListEdit::named(list, words).empty(); });
        if (held > most)
            holding.clear();
        most = std::max(most, held);
        if (held == most)
            holding.push_back(note);
    }
    return holding;
}

/// The same by what may be a slip of the finger: the change asks about it.
std::vector<Note> holdingAlike(const std::vector<Note>& lists, const ItemTexts& names)
{
    std::vector<Note> holding;
    for (const Note& note : lists) {
        const CheckList list(note.body);
        const bool isAlike = std::ranges::any_of(names, [&](const std::string& words) {
            return std::ranges::any_of(list.items(),
                [&](const CheckListItem& item) { return ListWords::ofItem(words, item.text) == ListLikeness::near; });
        });
        if (isAlike)
            holding.push_back(note);
    }
    return holding;
}

/// What is done goes from the list that has such things.
ListMeant withTicks(const std::vector<Note>& lists)
{
    std::vector<Note> meant;
    std::ranges::copy_if(lists, std::back_inserter(meant), [](const Note& note) {
        const CheckList list(note.body);
        return list.openItems() < list.items().size();
    });
    if (meant.size() == 1)
        return {meant.front(), std::nullopt};
    return {std::nullopt,
        meant.empty() ? ToolResult(ToolStatus::notOnList).add("lists", ListsTold::described(lists))
                      : ListsTold::which(meant)};
}

/// No list is named: the one that holds what is named is meant. What only looks has all of them told.
ListMeant unnamed(const std::vector<Note>& lists, const ListRequest& request)
{
    const ItemTexts names = itemsNamed(request);
    if (request.edit.clearTicked)
        return withTicks(lists);
    const bool onlyLooks = request.kind == ListRequest::Kind::show;
    std::vector<Note> meant = holdingMost(lists, names);
    if (meant.empty())
        meant = holdingAlike(lists, names);
    if (meant.size() == 1 || lists.size() < 2)
        return meant.size() == 1 ? ListMeant{meant.front(), std::nullopt}
            : lists.empty()      ? ListMeant{std::nullopt, ListsTold::none(request, lists)}
                                 : ListMeant{lists.front(), std::nullopt};
    if (onlyLooks)
        return {
            std::nullopt, request.has.empty() ? ListsTold::all(lists, true) : ListsTold::holding(lists, request.has)};
    const bool isNowhere = meant.empty() && !names.empty() && request.edit.add.empty();
    if (isNowhere)
        return {std::nullopt,
            ToolResult(ToolStatus::notOnList).add("missing", names).add("lists", ListsTold::described(lists))};
    return {std::nullopt, ListsTold::which(meant.empty() ? lists : meant)};
}

std::vector<Note> called(const std::vector<Note>& lists, const ListWords::Best& best)
{
    std::vector<Note> meant;
    for (const std::size_t place : best.places)
        meant.push_back(lists[place]);
    return meant;
}

} // namespace

ListWords::Best ListMeant::best(const std::vector<Note>& lists, const std::string& name)
{
    std::vector<std::string_view> titles;
    titles.reserve(lists.size());
    for (const Note& list : lists)
        titles.push_back(list.title);
    return ListWords::bestNames(name, titles);
}

ListMeant ListMeant::of(const std::vector<Note>& lists, const ListRequest& request)
{
    if (!request.id.empty()) {
        const auto found = std::ranges::find(lists, request.id, &Note::id);
        if (found != lists.end())
            return {*found, std::nullopt};
        return {std::nullopt, ListsTold::none(request, lists)};
    }
    if (!ListWords::isName(request.name))
        return unnamed(lists, request);
    const auto named = best(lists, request.name);
    const std::vector<Note> meant = called(lists, named);
    const bool losesSomething = request.kind == ListRequest::Kind::remove || request.edit.clearAll;
    if (meant.empty())
        return {std::nullopt, ListsTold::none(request, lists)};
    if (meant.size() > 1 && request.kind == ListRequest::Kind::show) // all of them are told
        return {
            std::nullopt, request.has.empty() ? ListsTold::all(meant, true) : ListsTold::holding(meant, request.has)};
    if (meant.size() > 1 || (losesSomething && named.likeness != ListLikeness::same))
        return {std::nullopt, ListsTold::which(meant)};
    return {meant.front(), std::nullopt};
}

ToolResult ListMeant::several(const std::vector<Note>& lists, const ListRequest& request)
{
    std::vector<Note> meant;
    std::ranges::copy_if(lists, std::back_inserter(meant), [&](const Note& list) {
        return !ListWords::isName(request.name) || ListWords::ofName(request.name, list.title) >= ListLikeness::part;
    });
    if (meant.empty() && !lists.empty())
        return ListsTold::none(request, lists);
    return request.has.empty() ? ListsTold::all(meant, request.showsItems) : ListsTold::holding(meant, request.has);
}

} // namespace quorvell
