// SPDX-License-Identifier: MIT
// Catches lists that are changed on a guess, and changes that are told wrongly or cannot be taken back.
#include "Quorvell/tools/notebook/ListKeeping.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Quorvell/tools/notebook/NoteKeepingTools.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <tuple>

namespace quorvell {
namespace {

struct ListBench {
    explicit ListBench(std::vector<Note> notes) { notebook.list = std::move(notes); }

    MemoryNotebook notebook;
    UndoBook book;
    NotebookToolContext context{.now = [] { return Instant{}; },
        .newID = [] { return "new"; },
        .calendar = *Calendar::create("Asia/Tokyo", "en_GB"),
        .undo = &book};

    /// Without what is told of the list in every answer.
    std::string answer(const std::string& arguments)
    {
        Json result;
        keepNote(notebook, context, LiveFunctionCall::fromArgumentsText("1", "keep_note", arguments, false),
            ToolReply([&result](const Json& told) { result = told; }));
        for (const char* key : {"id", "title", "open", "ticked", "lists", "message"})
            if (const Json* member = memberOf(result, key);
                member && (std::string(key) != "ticked" || !member->is_array()))
                result.erase(key);
        return dumpJson(result);
    }
};

std::vector<Note> someLists()
{
    return {{.id = "s",
                .title = "Shopping list",
                .body = "- [ ] milk\n- [x] eggs\n- [ ] oat milk\n- [ ] two loaves of bread"},
        {.id = "p", .title = "Party", .body = "# Saturday\n- [ ] chairs\n- [ ] music"},
        {.id = "m", .title = "Meeting", .body = "We said\n- [ ] ask Bob\nand went home."}};
}

TEST(ListKeeping, doesWhatIsClearAndAsksOtherwise)
{
    for (const auto& [name, lines] : test::fixtureRows("tools/lists.txt", 3)) {
        SCOPED_TRACE(name + lines[0]);
        ListBench bench(someLists());
        EXPECT_EQ(bench.answer(lines[0]), lines[1]);
        std::string bodies;
        for (const Note& note : bench.notebook.list)
            if (note.id != "m")
                bodies += (bodies.empty() ? "" : " | ") + note.title + ": " + note.body;
        std::ranges::replace(bodies, '\n', '/');
        const std::string before = "Shopping list: - [ ] milk/- [x] eggs/- [ ] oat milk/- [ ] two loaves of bread"
                                   " | Party: # Saturday/- [ ] chairs/- [ ] music";
        EXPECT_EQ(bodies == before ? "as before" : bodies, lines[2]);
        // What was changed can be taken back, once.
        if (lines[2] == "as before")
            continue;
        EXPECT_TRUE(bench.answer(R"({"undo":"u1"})").starts_with(R"({"status":"undone","what":")"));
        std::ranges::sort(bench.notebook.list, std::ranges::greater(), &Note::id);
        EXPECT_EQ(bench.notebook.list, someLists());
        EXPECT_TRUE(bench.answer(R"({"undo":"u1"})").starts_with(R"({"error":)"));
    }
}

TEST(ListKeeping, takesBackItsOwnChangeAmongOthers)
{
    ListBench bench(someLists());
    bench.answer(R"({"list":"shopping","add":["tea"]})");
    bench.answer(R"({"list":"shopping","remove":["milk"]})");
    EXPECT_EQ(bench.answer(R"({"undo":"u1"})"), R"({"status":"undone","what":"adding tea to your shopping list"})");
    EXPECT_EQ(bench.notebook.list[0].body, "- [x] eggs\n- [ ] oat milk\n- [ ] two loaves of bread");
    bench.notebook.list[0].body += "\n- [ ] by hand";
    bench.answer(R"({"undo":"u2"})");
    EXPECT_EQ(bench.notebook.list[0].body,
        "- [x] eggs\n- [ ] oat milk\n- [ ] two loaves of bread\n- [ ] by hand\n- [ ] milk");

    bench.answer(R"({"list":"shopping","tick":["bread"]})");
    bench.notebook.list[0].body = "- [ ] something else";
    EXPECT_EQ(bench.answer(R"({"undo":"u3"})"), R"({"error":"It was changed since then, so it stays as it is."})");
    EXPECT_EQ(bench.notebook.list[0].body, "- [ ] something else");
}

TEST(ListKeeping, saysWhenAnotherHandWasFaster)
{
    const std::string tooLate = R"({"error":"Nothing was changed: somebody else changed the list)";
    const std::tuple<const char*, const char*, const char*, std::string> rows[] = {
        {"the item went, and one that holds its word stays", R"({"list":"shopping","remove":["milk"]})",
            "- [ ] oat milk", tooLate},
        {"ticked there, too", R"({"list":"shopping","tick":["#1"]})", "- [x] milk\n- [ ] tea",
            R"({"status":"changed")"},
        {"added beside it", R"({"list":"shopping","add":["tea"]})", "- [ ] rum\n- [ ] tea", R"({"status":"changed")"},
        {"taken back too late", R"({"undo":"u1"})", "- [ ] rum", R"({"error":"It was changed since then)"},
    };
    for (const auto& [name, call, theirs, told] : rows) {
        SCOPED_TRACE(name);
        ListBench bench(someLists());
        if (std::string_view(call).find("undo") != std::string_view::npos)
            bench.answer(R"({"list":"shopping","tick":["milk"]})");
        bench.notebook.otherHand = [theirs = theirs](Note& note) { note.body = theirs; };
        EXPECT_TRUE(bench.answer(call).starts_with(told)) << bench.answer(call);
        EXPECT_EQ(bench.notebook.list[0].body, theirs);
    }
}

TEST(ListKeeping, takesFiveHundredItemsAndNoMoreThanFit)
{
    ListBench bench({});
    bench.answer(R"({"list":"Everything","create":true})");
    for (int call = 0; call < 5; ++call) {
        Json items = Json::array();
        for (int item = 0; item < 200; ++item)
            items.push_back("thing " + std::to_string(call) + "-" + std::to_string(item));
        const std::string told = bench.answer(dumpJson({{"list", "everything"}, {"add", items}}));
        EXPECT_TRUE(told.starts_with(R"({"status":"changed")")) << told.substr(0, 100);
    }
    EXPECT_EQ(bench.answer(R"({"list":"","add":["more"]})"),
        R"({"error":"Nothing was changed: a list may have at most 1000 items."})");
    EXPECT_TRUE(
        bench.answer(R"({"list":"","tick":["#1000"]})").find(R"("ticked":["thing 4-199"])") != std::string::npos);
}

TEST(NoteKeeping, deletesOnePlainNoteAndBringsItBack)
{
    ListBench bench({{.id = "a", .title = "Tea", .body = "Green tea is out."},
        {.id = "b", .title = "Call mum", .remindAt = Instant{}},
        {.id = "c", .kind = NoteKind::aboutMe, .title = "Likes tea.", .confirmed = true}});
    const auto before = bench.notebook.list;
    for (const char* refused : {R"({"note":"b","delete":true})", R"({"note":"c","delete":true})",
             R"({"note":"none","delete":true})", R"({"note":"a"})"}) {
        EXPECT_TRUE(bench.answer(refused).starts_with(R"({"error":)")) << refused;
        EXPECT_EQ(bench.notebook.list, before) << refused;
    }
    EXPECT_EQ(bench.answer(R"({"note":"a","delete":true})"), R"({"status":"deleted","undo":"u1"})");
    EXPECT_EQ(bench.notebook.list.size(), 2);
    EXPECT_EQ(bench.answer(R"({"undo":"u1"})"), R"({"status":"undone","what":"deleting “Tea”"})");
    std::ranges::sort(bench.notebook.list, {}, &Note::id);
    EXPECT_EQ(bench.notebook.list, before);
}

} // namespace
} // namespace quorvell
