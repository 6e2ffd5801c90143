// SPDX-License-Identifier: MIT
// Catches lists that change lines of others, lose items, or take one thing for another.
#include "QuorvellCore/notebook/CheckList.h"

#include "QuorvellCore/notebook/ListNote.h"
#include "QuorvellCore/notebook/ListWords.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

std::string shown(const CheckList& list)
{
    std::string text;
    for (const CheckListItem& item : list.items())
        text += (text.empty() ? "" : "|") + std::string(item.isTicked ? "+" : "") + item.text;
    return text;
}

TEST(CheckList, readsBoxesAndNothingElse)
{
    struct Row {
        const char* name;
        const char* body;
        const char* items;
        bool isNothingElse = true;
    };
    const Row rows[] = {
        {"the usual form", "- [ ] milk\n- [x] eggs", "milk|+eggs"},
        {"other markers and depths", "* [X] a\n  + [ ] b\n\t- [ ] c\n12. [ ] d\n3) [x] e", "+a|b|c|d|+e"},
        {"carriage returns", "- [ ] milk\r\n- [x] eggs\r\n", "milk|+eggs"},
        {"headings and blank lines", "# Dairy\n\n- [ ] milk\n\nFruit:\n---\n- [ ] pears", "milk|pears"},
        {"a line that belongs to a box", "- [ ] milk\n  the blue one\n- [ ] eggs", "milk|eggs"},
        {"prose beside it", "Don't forget the bags!\n- [ ] milk", "milk", false},
        {"words with signs", "- [ ] **bold** [link](x) 🥛 and `- [ ] code`",
            "**bold** [link](x) 🥛 and `- [ ] code`"},
        {"what only looks like one", "- [] a\n-[ ] b\n- [ ]c\n- [y] d\n[ ] e\n1234567890. [ ] f", "", false},
        {"code", "```\n- [ ] no\n~~~\n- [ ] no\n```\n- [ ] yes", "yes", false},
        {"a box without words", "- [ ]\n- [x]   \n- [ ] a", "a"},
        {"nothing", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CheckList list(row.body);
        EXPECT_EQ(shown(list), row.items);
        EXPECT_EQ(list.isNothingElse(), row.isNothingElse);
        EXPECT_EQ(list.body(), row.body);
    }
}

TEST(CheckList, changesOnlyWhatIsMeant)
{
    using Change = void (*)(CheckList&);
    struct Row {
        const char* name;
        const char* before;
        Change change;
        const char* after;
    };
    const Change add = [](CheckList& list) { list.add({"new"}); };
    const Change removeFirst = [](CheckList& list) { list.remove({0}); };
    const Row rows[] = {
        {"into nothing", "", add, "- [ ] new"},
        {"into the free box", CheckList::emptyBody.data(), add, "- [ ] new"},
        {"behind the last box and its lines", "x\n* [ ] a\n  more\n\nend", add, "x\n* [ ] a\n  more\n* [ ] new\n\nend"},
        {"outside of what is nested", "- [ ] a\n  - [ ] b", add, "- [ ] a\n  - [ ] b\n- [ ] new"},
        {"with the next number", "9. [x] a\r\n", add, "9. [x] a\r\n10. [ ] new\r\n"},
        {"with no number that is too long", "999999999) [ ] a", add, "999999999) [ ] a\n999999999) [ ] new"},
        {"before code that nothing closes", "a\n```\n- [ ] b", add, "a\n- [ ] new\n```\n- [ ] b"},
        {"behind prose", "Text", add, "Text\n- [ ] new"},
        {"ticks", "- [ ] a\n- [ ] b\r\n", [](CheckList& list) { list.setTicked(1, true); }, "- [ ] a\n- [x] b\r\n"},
        {"new words", "+ [x]  a \r\n", [](CheckList& list) { list.setText(0, "b"); }, "+ [x] b\r\n"},
        {"takes its lines along", "- [ ] a\n  more\n- [ ] b", removeFirst, "- [ ] b"},
        {"leaves what is nested", "- [ ] a\n  - [ ] b", removeFirst, "  - [ ] b"},
        {"behind a lone carriage return", "- [ ] a\r", add, "- [ ] a\n- [ ] new"},
        {"stays a list", "# A\n* [x] a\n", removeFirst, "# A\n* [ ]\n"},
        {"several", "- [ ] a\n- [ ] b\nx\n- [x] c",
            [](CheckList& list) {
                list.remove({0, 2});
            },
            "- [ ] b\nx"},
        {"what is nested, with what was nested", "- [ ] a\n  - [ ] b\n    of b\n  of a\nx",
            [](CheckList& list) {
                list.remove({1, 0});
            },
            "- [ ]\nx"},
        {"nothing", "x", [](CheckList& list) { list.remove({}); }, "x"},
        {"no such one", "- [ ] a", [](CheckList& list) { list.remove({7}); }, "- [ ] a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CheckList list(row.before);
        row.change(list);
        EXPECT_EQ(list.body(), row.after);
    }
    EXPECT_EQ(CheckList::itemText(" two\nlines "), "two lines");
    EXPECT_EQ(CheckList::itemText("a\x1b[2J\u202eb"), "a[2Jb");
    EXPECT_FALSE(CheckList::itemText(" \n"));
    EXPECT_FALSE(CheckList::itemText(std::string(1, '\0')));
    EXPECT_FALSE(CheckList::itemText(std::string(CheckList::longestItem + 1, 'a')));
}

TEST(ListWords, comparesAsPeopleNameThings)
{
    struct Row {
        const char* wanted;
        const char* held;
        ListLikeness item;
        ListLikeness name;
    };
    using enum ListLikeness;
    const Row rows[] = {
        {"Milk", "milk", same, same},
        {"the eggs", "egg", alike, same},
        {"my shopping list", "Shopping", none, same},
        {"groceries", "Grocery list", part, same},
        {"grocery list", "Shopping list", none, alike},
        {"grocery shopping", "Shopping", none, alike},
        {"todo list", "To do", none, same},
        {"to-do", "Tasks", none, alike},
        {"bread", "two loaves of bread", part, part},
        {"party", "Ana's party", part, part},
        {"tomatos", "tomatoes", alike, same},
        {"brcoli", "brocoli", near, near},
        {"cereal", "ceral", near, near},
        {"bread beer", "bread", none, none},
        {"leg", "egg", none, none},
        {"milk", "silk scarf", none, none},
        {"🥛", "🥛", same, none},
        {"🥛", "🍎", none, none},
        {"my list", "The list", alike, none},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.wanted) + " / " + row.held);
        EXPECT_EQ(ListWords::ofItem(row.wanted, row.held), row.item);
        EXPECT_EQ(ListWords::ofName(row.wanted, row.held), row.name);
    }
    EXPECT_EQ(ListWords::bestNames("milk", {"milk", "oat milk", "Milk"}).places, (std::vector<std::size_t>{0, 2}));
}

TEST(ListNote, knowsListsThatOthersWrote)
{
    struct Row {
        const char* title;
        const char* body;
        bool isList;
    };
    const Row rows[] = {
        {"Party", "- [ ] chairs\n- [ ] music", true},
        {"Party", CheckList::emptyBody.data(), true},
        {"Packing list", "", true},
        {"To do", "Before we leave.\n- [ ] keys", true},
        {"Meeting", "We agreed to\n- [ ] ask Bob\nand went home.", false},
        {"Shopping list", "milk, eggs", false},
        {"Party", "", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ListNote::isList({.id = "1", .title = row.title, .body = row.body}), row.isList)
            << row.title << row.body;
    EXPECT_FALSE(ListNote::isList({.id = "1", .title = "Milk list", .remindAt = Instant{}})) << "a reminder";
    std::string data;
    for (std::size_t box = 0; box <= CheckList::mostBoxes; ++box)
        data += "- [ ] a\n";
    EXPECT_FALSE(ListNote::isList({.id = "1", .title = "Data list", .body = data}));
}

} // namespace
} // namespace quorvell
