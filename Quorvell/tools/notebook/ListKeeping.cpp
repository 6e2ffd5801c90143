// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/ListKeeping.h"

#include "Quorvell/tools/notebook/ListMeant.h"
#include "Quorvell/tools/notebook/ListsTold.h"
#include "Quorvell/tools/notebook/NoteUndo.h"
#include "QuorvellCore/notebook/ListNote.h"
#include "QuorvellCore/notebook/ListWords.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

using ItemTexts = std::vector<std::string>;

std::vector<Note> listsOf(const FullNotebook& notebook)
{
    std::vector<Note> lists;
    std::ranges::copy_if(notebook.notes(), std::back_inserter(lists), ListNote::isList);
    return lists;
}

std::string namedInWords(const ItemTexts& texts)
{
    constexpr std::size_t mostNamed = 3;
    if (texts.size() > mostNamed)
        return std::to_string(texts.size()) + " things";
    std::string said;
    for (std::size_t index = 0; index < texts.size(); ++index)
        said += (index == 0 ? "" : index + 1 == texts.size() ? " and " : ", ") + texts[index];
    return said;
}

ToolResult shownList(const Note& note, const ListRequest& request, const std::vector<Note>& lists)
{
    ToolResult result(ToolStatus::list);
    result.addAll(ListsTold::described(note));
    Json items = Json::object();
    addItems(items, note);
    result.addAll(items);
    if (request.has.empty())
        return result;
    const CheckList list(note.body);
    Json held = Json::array();
    Json missing = Json::array();
    for (const std::string& words : request.has) {
        const auto places = ListEdit::named(list, words);
        for (const std::size_t place : places)
            held.push_back({{"text", list.items()[place].text}, {"ticked", list.items()[place].isTicked}});
        if (places.empty())
            missing.push_back(words);
    }
    ListsTold::addElsewhere(result, lists, note, readStrings(missing).value_or(ItemTexts{}));
    return result.add("held", held).add("missing", missing);
}

void addTexts(ToolResult& result, const char* key, const ItemTexts& texts)
{
    if (!texts.empty())
        result.add(key, texts);
}

ItemTexts textsOfItems(const std::vector<CheckListItem>& items)
{
    ItemTexts texts;
    for (const CheckListItem& item : items)
        texts.push_back(item.text);
    return texts;
}

void addOutcome(ToolResult& result, const ListEdit::Outcome& outcome)
{
    addTexts(result, "added", outcome.added);
    addTexts(result, "again", outcome.again);
    addTexts(result, "already", outcome.already);
    addTexts(result, "ticked", outcome.ticked);
    addTexts(result, "unticked", outcome.unticked);
    addTexts(result, "removed", textsOfItems(outcome.removed));
    addTexts(result, "replaced", outcome.replaced);
    addTexts(result, "missing", outcome.missing);
}

/// Behind "Undone:".
std::string doneInWords(const ListEdit::Outcome& outcome, const std::string& list)
{
    ItemTexts added = outcome.added;
    added.insert(added.end(), outcome.again.begin(), outcome.again.end());
    if (!added.empty())
        return "adding " + namedInWords(added) + " to your " + list;
    if (!outcome.removed.empty())
        return "taking " + namedInWords(textsOfItems(outcome.removed)) + " off your " + list;
    if (!outcome.replaced.empty())
        return "putting " + outcome.replaced.back() + " in place of " + outcome.replaced.front() + " on your " + list;
    const bool isTick = !outcome.ticked.empty();
    return (isTick ? "ticking " : "unticking ") + namedInWords(isTick ? outcome.ticked : outcome.unticked) + " on your "
        + list;
}

ToolResult whichItem(const Note& note, const ListEdit::Outcome& outcome)
{
    Json unclear = Json::array();
    for (const ListEdit::Unclear& one : outcome.unclear)
        unclear.push_back({{"words", one.words}, {"candidates", one.candidates}});
    const ListEdit::Unclear& first = outcome.unclear.front();
    const std::string name = ListWords::spoken(note.title);
    const std::string question = first.candidates.size() == 1
        ? "There is no " + first.words + " on your " + name + ". Do you mean " + first.candidates.front() + "?"
        : "Which one do you mean: " + ListsTold::eitherOf(first.candidates) + "?";
    return ToolResult(ToolStatus::whichItem).ask(question).addAll(ListsTold::described(note)).add("unclear", unclear);
}

/// `isDone` is known once the list is stored.
NotebookCallback answeringList(
    ToolReply reply, const ToolResult& result, std::shared_ptr<bool> isDone = std::make_shared<bool>(true))
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    return [answer, result, isDone = std::move(isDone)](const NotebookVerdict& verdict) {
        if (verdict.isStored && !*isDone)
            answer->fail("Nothing was changed: somebody else changed the list at the same time. Look at it first.");
        else if (verdict.isStored)
            answer->answer(result);
        else
            answer->fail(verdict.problem);
    };
}

/// One call about one list, over all that it can be.
class Keeping {
public:
    Keeping(FullNotebook& notebook, const NotebookToolContext& context, const ListRequest& request)
        : m_notebook(notebook)
        , m_context(context)
        , m_request(request)
        , m_undo{notebook, context.undo}
    {
    }

    void create(ToolReply reply) const
    {
        const std::vector<Note> lists = listsOf(m_notebook);
        const auto best = ListMeant::best(lists, m_request.name);
        const std::string title = withUpperCaseFirst(m_request.name);
        const auto same = std::ranges::find(lists, title, &Note::title);
        if (best.likeness == ListLikeness::same || same != lists.end())
            return reply.answer(
                ToolResult(ToolStatus::known)
                    .addAll(ListsTold::described(same != lists.end() ? *same : lists[best.places.front()])));
        CheckList list(CheckList::emptyBody);
        const auto outcome = ListEdit{.add = m_request.edit.add}.apply(list);
        const Note note{.id = m_context.newID(),
            .title = title,
            .body = list.body(),
            .created = m_context.now(),
            .author = NoteAuthor::quorvell,
            .origin = NoteOrigin::conversation};
        ToolResult kept(ToolStatus::kept);
        kept.addAll(ListsTold::described(note));
        addOutcome(kept, outcome);
        m_undo.ofNew(note, "making your " + ListWords::spoken(note.title), kept);
        m_notebook.add(note, answeringList(std::move(reply), kept));
    }

    void edit(const Note& note, ToolReply reply) const
    {
        CheckList list(note.body);
        const auto outcome = m_request.edit.apply(list);
        if (outcome.isTooLong)
            return reply.fail(
                "Nothing was changed: a list may have at most " + std::to_string(CheckList::mostItems) + " items.");
        if (!outcome.unclear.empty())
            return reply.answer(whichItem(note, outcome));
        Note changed = note;
        changed.body = list.body();
        const bool isNoneFound = !outcome.changed() && outcome.already.empty() && !outcome.missing.empty();
        ToolResult result(isNoneFound ? ToolStatus::notOnList : ToolStatus::changed);
        result.addAll(ListsTold::described(changed));
        addOutcome(result, outcome);
        if (isNoneFound)
            ListsTold::addElsewhere(result, listsOf(m_notebook), note, outcome.missing);
        if (!outcome.changed())
            return reply.answer(result);
        const auto takeBack = [outcome, before = note.body, after = changed.body](Note& now) {
            if (now.body == after) {
                now.body = before;
                return true;
            }
            CheckList present(now.body);
            if (!ListEdit::takeBack(outcome, present))
                return false;
            now.body = present.body();
            return true;
        };
        m_undo.ofChange(note.id, takeBack, doneInWords(outcome, ListWords::spoken(note.title)), result);
        // Another program may have written the note in the meantime.
        const auto isDone = std::make_shared<bool>(true);
        const auto change = [again = ListEdit::again(outcome), before = note.body, after = changed.body, isDone](
                                Note& now) {
            CheckList present(now.body);
            *isDone = now.body == before || again.apply(present).isWhole();
            if (*isDone)
                now.body = now.body == before ? after : present.body();
        };
        m_notebook.update(note.id, change, answeringList(std::move(reply), result, isDone));
    }

    void rename(const Note& note, ToolReply reply) const
    {
        Note changed = note;
        changed.title = withUpperCaseFirst(m_request.title);
        ToolResult result(ToolStatus::changed);
        result.addAll(ListsTold::described(changed)).add("was", ListWords::spoken(note.title));
        const auto takeBack = [before = note.title, after = changed.title](Note& now) {
            const bool isAsLeft = now.title == after;
            now.title = isAsLeft ? before : now.title;
            return isAsLeft;
        };
        m_undo.ofChange(note.id, takeBack, "renaming your " + ListWords::spoken(note.title), result);
        const auto change = [title = changed.title](Note& now) { now.title = title; };
        m_notebook.update(note.id, change, answeringList(std::move(reply), result));
    }

    void remove(const Note& note, ToolReply reply) const
    {
        ToolResult result(ToolStatus::deleted);
        result.addAll(ListsTold::described(note));
        m_undo.ofRemoval(note, "deleting your " + ListWords::spoken(note.title), result);
        m_notebook.delete_(note.id, answeringList(std::move(reply), result));
    }

private:
    FullNotebook& m_notebook;
    const NotebookToolContext& m_context;
    const ListRequest& m_request;
    NoteUndo m_undo;
};

} // namespace

void addItems(Json& shown, const Note& note)
{
    constexpr std::size_t mostBytes = 20'000; ///< Of a result that a model reads; then it says how many are left.
    if (!ListNote::isList(note))
        return;
    const CheckList list(note.body);
    Json items = Json::array();
    std::size_t bytes = 0;
    for (const std::size_t item : ListEdit::told(list)) {
        const auto& [text, isTicked] = list.items()[item];
        if ((bytes += text.size()) > mostBytes)
            break;
        items.push_back({{"place", items.size() + 1}, {"text", text}, {"ticked", isTicked}});
    }
    if (items.size() < list.items().size())
        shown["left_out"] = list.items().size() - items.size();
    shown["items"] = std::move(items);
}

void keepList(FullNotebook& notebook, const NotebookToolContext& context, const ListRequest& request, ToolReply reply)
{
    if (!request.problem.empty())
        return reply.fail("Nothing was changed: " + request.problem);
    const Keeping keeping(notebook, context, request);
    if (request.kind == ListRequest::Kind::create)
        return keeping.create(std::move(reply));
    const auto lists = listsOf(notebook);
    if (request.kind == ListRequest::Kind::showAll)
        return reply.answer(ListMeant::several(lists, request));
    const ListMeant meant = ListMeant::of(lists, request);
    if (!meant.list)
        return reply.answer(*meant.answer);
    switch (request.kind) {
    case ListRequest::Kind::show:
        return reply.answer(shownList(*meant.list, request, lists));
    case ListRequest::Kind::edit:
        return keeping.edit(*meant.list, std::move(reply));
    case ListRequest::Kind::rename:
        return keeping.rename(*meant.list, std::move(reply));
    case ListRequest::Kind::remove:
        return keeping.remove(*meant.list, std::move(reply));
    case ListRequest::Kind::create:
    case ListRequest::Kind::showAll:
        return;
    }
}

} // namespace quorvell
