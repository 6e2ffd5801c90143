// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/ListEdit.h"

#include "QuorvellCore/notebook/ListWords.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace quorvell {

namespace {

using Places = std::vector<std::size_t>;
enum class Wanted { open, ticked, any };

std::string textOf(const CheckList& list, std::size_t item)
{
    return list.items()[item].text;
}

/// "#3", "#last"; nothing for words.
std::optional<Places> atPlace(const CheckList& list, std::string_view words, Wanted wanted)
{
    if (!words.starts_with('#'))
        return std::nullopt;
    words.remove_prefix(1);
    const Places told = ListEdit::told(list);
    if (words == "all")
        return told;
    if (words == "last" || words == "first") {
        Places fitting;
        std::ranges::copy_if(told, std::back_inserter(fitting),
            [&](std::size_t item) { return list.items()[item].isTicked == (wanted == Wanted::ticked); });
        const Places& among = fitting.empty() ? told : fitting;
        return among.empty() ? Places{} : Places{words == "last" ? among.back() : among.front()};
    }
    std::size_t number = 0;
    const auto read = std::from_chars(words.data(), words.data() + words.size(), number);
    if (read.ptr != words.data() + words.size() || words.empty())
        return std::nullopt;
    return number >= 1 && number <= told.size() ? Places{told[number - 1]} : Places{};
}

using Things = std::vector<ListThing>;

Things thingsOn(const CheckList& list)
{
    Things things;
    for (const CheckListItem& item : list.items())
        things.emplace_back(item.text);
    return things;
}

/// Finds what is named, and keeps what is not found or not clear.
class Finder {
public:
    Finder(const CheckList& list, bool isByTexts, ListEdit::Outcome& outcome)
        : m_list(list)
        , m_isByTexts(isByTexts)
        , m_outcome(outcome)
    {
    }

    /// All of the same words where `wanted` is any, else the first.
    Places find(const std::string& words, Wanted wanted)
    {
        auto found = m_isByTexts ? Places{} : atPlace(m_list, words, wanted).value_or(Places{});
        if (words == "#all" && !found.empty())
            return found;
        bool isSure = !found.empty();
        if (!isSure) {
            auto best = bestFor(ListThing(words));
            isSure = best.likeness > ListLikeness::near;
            found = fitting(std::move(best.places), wanted);
        }
        if (found.empty())
            m_outcome.missing.push_back(words);
        else if (!isSure || !areSame(found))
            m_outcome.unclear.push_back({words, textsOf(found)});
        else
            return wanted == Wanted::any ? found : Places{found.front()};
        return {};
    }

private:
    /// What is called the same is looked up: many are named at once where all are, and a list may be long.
    ListWords::Best bestFor(const ListThing& wanted)
    {
        if (m_things.empty())
            readThings();
        const auto same = m_same.find(keyOf(wanted));
        if (same != m_same.end())
            return {ListLikeness::same, same->second};
        return m_isByTexts ? ListWords::Best{} : ListWords::bestItems(wanted, m_things);
    }

    void readThings()
    {
        m_things = thingsOn(m_list);
        for (std::size_t item = 0; item < m_things.size(); ++item)
            m_same[keyOf(m_things[item])].push_back(item);
    }

    /// Equal where the likeness is `same`.
    static const std::string& keyOf(const ListThing& thing) { return thing.plain.empty() ? thing.text : thing.plain; }

    /// Of several, those that can still be ticked, or unticked.
    Places fitting(Places places, Wanted wanted) const
    {
        Places fitting;
        std::ranges::copy_if(places, std::back_inserter(fitting), [&](std::size_t item) {
            return wanted == Wanted::any || m_list.items()[item].isTicked == (wanted == Wanted::ticked);
        });
        return fitting.empty() ? places : fitting;
    }

    bool areSame(const Places& places) const
    {
        const std::string first = textOf(m_list, places.front());
        return std::ranges::all_of(places,
            [&](std::size_t item) { return ListWords::ofItem(first, textOf(m_list, item)) == ListLikeness::same; });
    }

    std::vector<std::string> textsOf(const Places& places) const
    {
        constexpr std::size_t mostTold = 5;
        std::vector<std::string> texts;
        for (const std::size_t item : places)
            if (std::string text = textOf(m_list, item);
                texts.size() < mostTold && std::ranges::find(texts, text) == texts.end())
                texts.push_back(std::move(text));
        return texts;
    }

    const CheckList& m_list;
    bool m_isByTexts;
    ListEdit::Outcome& m_outcome;
    Things m_things; ///< Once something is looked for, as the next.
    std::map<std::string, Places> m_same; ///< By their key.
};

/// `things` are those on the list, and stay so.
void addOne(CheckList& list, Things& things, const std::string& text, ListEdit::Outcome& outcome)
{
    ListThing thing(text);
    for (std::size_t item = 0; item < things.size(); ++item) {
        if (ListWords::ofItem(thing, things[item]) < ListLikeness::alike)
            continue;
        const bool wasTicked = list.items()[item].isTicked;
        (wasTicked ? outcome.again : outcome.already).push_back(textOf(list, item));
        if (wasTicked)
            list.setTicked(item, false);
        return;
    }
    list.add({text});
    if (list.items().back().text == text)
        things.push_back(std::move(thing));
    else // it took a free box in between
        things = thingsOn(list);
    outcome.added.push_back(text);
}

/// The item of exactly that text and state.
std::optional<std::size_t> exactly(const CheckList& list, const std::string& text, bool isTicked)
{
    const auto found = std::ranges::find(list.items(), CheckListItem{text, isTicked});
    return found == list.items().end() ? std::nullopt
                                       : std::optional(static_cast<std::size_t>(found - list.items().begin()));
}

} // namespace

bool ListEdit::Outcome::changed() const
{
    return !(
        added.empty() && again.empty() && ticked.empty() && unticked.empty() && removed.empty() && replaced.empty());
}

std::vector<std::size_t> ListEdit::told(const CheckList& list)
{
    Places told;
    for (const bool isTicked : {false, true})
        for (std::size_t item = 0; item < list.items().size(); ++item)
            if (list.items()[item].isTicked == isTicked)
                told.push_back(item);
    return told;
}

std::vector<std::size_t> ListEdit::named(const CheckList& list, std::string_view words)
{
    if (const auto place = atPlace(list, words, Wanted::any))
        return *place;
    auto best = ListWords::bestItems(ListThing(words), thingsOn(list));
    return best.likeness > ListLikeness::near ? std::move(best.places) : Places{};
}

ListEdit::Outcome ListEdit::apply(CheckList& list) const
{
    Outcome outcome;
    Finder finder(list, isByTexts, outcome);
    const auto found = [&finder](const std::vector<std::string>& names, Wanted wanted) {
        Places places;
        for (const std::string& words : names)
            std::ranges::copy(finder.find(words, wanted), std::back_inserter(places));
        return places;
    };
    const Places ticks = found(tick, Wanted::open);
    const Places unticks = found(untick, Wanted::ticked);
    const Places replaced = replace.empty() ? Places{} : finder.find(replace, Wanted::open);
    Places removed = found(remove, Wanted::any);
    const Places kept = found(keepOnly, Wanted::any);
    const bool goesElse = !keepOnly.empty() && outcome.missing.empty() && outcome.unclear.empty();
    for (std::size_t item = 0; goesElse && item < list.items().size(); ++item)
        if (std::ranges::find(kept, item) == kept.end())
            removed.push_back(item);
    for (std::size_t item = 0; item < list.items().size(); ++item)
        if (clearAll || (clearTicked && list.items()[item].isTicked))
            removed.push_back(item);
    std::ranges::sort(removed);
    removed.erase(std::unique(removed.begin(), removed.end()), removed.end());
    outcome.isTooLong = list.items().size() - removed.size() + add.size() > CheckList::mostItems && !add.empty();
    if (outcome.isTooLong || !outcome.unclear.empty())
        return outcome;

    const auto setTicked = [&](const Places& places, bool isTicked, std::vector<std::string>& changed) {
        for (const std::size_t item : places) {
            const bool isSo = list.items()[item].isTicked == isTicked;
            (isSo ? outcome.already : changed).push_back(textOf(list, item));
            list.setTicked(item, isTicked);
        }
    };
    setTicked(ticks, true, outcome.ticked);
    setTicked(unticks, false, outcome.unticked);
    if (!replaced.empty()) {
        outcome.replaced = {textOf(list, replaced.front()), by};
        list.setText(replaced.front(), by);
    }
    for (const std::size_t item : removed)
        outcome.removed.push_back(list.items()[item]);
    list.remove(removed);
    Things things = add.empty() ? Things() : thingsOn(list);
    for (const std::string& text : add)
        addOne(list, things, text, outcome);
    return outcome;
}

ListEdit ListEdit::again(const Outcome& outcome)
{
    ListEdit edit{.add = outcome.added, .tick = outcome.ticked, .untick = outcome.unticked, .isByTexts = true};
    edit.untick.insert(edit.untick.end(), outcome.again.begin(), outcome.again.end());
    for (const CheckListItem& item : outcome.removed)
        edit.remove.push_back(item.text);
    if (!outcome.replaced.empty()) {
        edit.replace = outcome.replaced.front();
        edit.by = outcome.replaced.back();
    }
    return edit;
}

bool ListEdit::takeBack(const Outcome& outcome, CheckList& list)
{
    if (outcome.removed.size() + list.items().size() > CheckList::mostItems && !outcome.removed.empty())
        return false;
    CheckList changed = list;
    const auto find = [&changed](const std::string& text, bool isTicked) { return exactly(changed, text, isTicked); };
    bool isThere = true;
    const auto setTicked = [&](const std::vector<std::string>& texts, bool wasTicked) {
        for (const std::string& text : texts) {
            const auto item = find(text, !wasTicked);
            isThere = isThere && item;
            if (item)
                changed.setTicked(*item, wasTicked);
        }
    };
    for (const std::string& text : outcome.added) {
        const auto item = find(text, false);
        isThere = isThere && item;
        if (item)
            changed.remove({*item});
    }
    setTicked(outcome.again, true);
    setTicked(outcome.ticked, false);
    setTicked(outcome.unticked, true);
    if (!outcome.replaced.empty()) {
        const auto open = find(outcome.replaced.back(), false);
        const auto item = open ? open : find(outcome.replaced.back(), true);
        isThere = isThere && item;
        if (item)
            changed.setText(*item, outcome.replaced.front());
    }
    for (const CheckListItem& item : outcome.removed)
        changed.add(item);
    if (isThere)
        list = std::move(changed);
    return isThere;
}

} // namespace quorvell
