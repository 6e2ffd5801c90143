// SPDX-License-Identifier: MIT
// Catches notes that a search misses, ranks wrongly, or still finds after they changed.
#include "NotebookDesk.h"
#include "PostScheduler.h"
#include "Quorvell/notebook/NotebookSearch.h"
#include "QuorvellCore/text/Characters.h"

namespace quorvell {
namespace {

/// Ids in their order are what the queries below find.
std::vector<Note> someNotes()
{
    return {
        {.id = "1", .title = "Dentist", .body = "Call Dr Müller's practice", .updated = monday},
        {.id = "2", .title = "Ideas", .body = "a dentist's chair for the gardens", .updated = monday},
        {.id = "3",
            .kind = NoteKind::howTo,
            .title = "Call the dentist",
            .updated = monday,
            .steps = {"Dialling", "Wait"}},
        {.id = "4", .kind = NoteKind::aboutMe, .title = "Dentist fear", .updated = monday},
        {.id = "5", .title = "Old dentist", .updated = monday, .archived = true},
        {.id = "6", .title = "Tea", .body = "Water, kettle", .updated = monday + 2h},
        {.id = "7", .title = "Tea", .body = "Water, kettle", .updated = monday + 3h},
        {.id = "8", .kind = NoteKind::howTo, .title = "Bread", .updated = monday - 1h, .timesUsed = 1},
        {.id = "9", .kind = NoteKind::howTo, .title = "Bread", .updated = monday - 2h, .timesUsed = 2},
    };
}

TEST(NoteIndex, ranksWhatHoldsAllWords)
{
    const struct Row {
        const char* words;
        const char* ids;
        NoteQuery::Reader reader = NoteQuery::Reader::assistant;
        std::optional<NoteKind> kind{};
    } rows[] = {{"DENT!", "312"}, {"entist", ""}, {"call dentist", "31"}, {"muller", "1"}, {"MÜLLER", "1"},
        {"garden", "2"}, {"gardening", "2"}, {"dial", "3"}, {"kettle", "76"}, {"water tea", "76"}, {"bread", "98"},
        {"fear", ""}, {"fear", "4", NoteQuery::Reader::person},
        {"dentist", "3", NoteQuery::Reader::assistant, NoteKind::howTo}, {"", "7612389"}, {"?! '", "7612389"},
        {"\" OR title:tea NEAR(", ""}, {"dentist AND", ""}};
    NoteIndex index;
    for (const Note& note : someNotes()) {
        index.put(note);
        index.put(note); // once more is as once
    }
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        std::string ids;
        const NotesFound found = index.find({.words = row.words, .kind = row.kind, .reader = row.reader});
        for (const NoteHit& hit : found.hits)
            ids += hit.id;
        if (std::string_view(row.words).empty() || row.words[0] == '?')
            std::sort(ids.begin() + 2, ids.end()); // some are of equal age
        EXPECT_EQ(ids, row.ids);
        EXPECT_EQ(found.count, found.hits.size());
    }
    EXPECT_EQ(index.find({.words = "dentist", .limit = 1}).count, 3u);
    index.remove("1");
    EXPECT_EQ(index.find({.words = "muller"}).count, 0u);
    EXPECT_EQ(index.find({.words = std::string(100'000, 'x')}).count, 0u);
}

TEST(NoteIndex, showsWhereTheWordsAre)
{
    std::string words;
    for (int number = 100; number < 200; ++number)
        words += "w" + std::to_string(number) + "\n ";
    const struct Row {
        const char* name;
        std::string body;
        const char* query;
        std::string starts, holds;
    } rows[] = {
        {"short text whole", " one\n\ntwo ", "two", "one two", "two"},
        {"around the word", words, "w150", "…", " w150 "},
        {"the beginning where only the title holds it", words, "title", "w100 w101", "…"},
        {"one endless word", std::string(5000, 'x'), "x", "xxx", "x…"},
        {"bad bytes", "caf\xE9 two", "two", "caf\uFFFD two", "two"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        NoteIndex index;
        index.put({.id = "1", .title = "Title", .body = row.body});
        const NotesFound found = index.find({.words = row.query});
        ASSERT_EQ(found.hits.size(), 1u);
        const std::string& snippet = found.hits[0].snippet;
        EXPECT_TRUE(snippet.starts_with(row.starts) && snippet.find(row.holds) != std::string::npos) << snippet;
        EXPECT_LE(characterCount(snippet), 162u);
        const NotesFound bare = index.find({.words = row.query, .withSnippets = false});
        ASSERT_EQ(bare.hits.size(), 1u);
        EXPECT_EQ(bare.hits[0].id + bare.hits[0].snippet, "1");
    }
}

TEST(NotebookSearch, staysCurrent)
{
    Desk desk;
    NotebookStore& store = desk.open();
    for (int number = 0; number < 120; ++number)
        store.add(noteOf("n" + std::to_string(number), "Many"), [](const NotebookVerdict&) {});
    test::PostScheduler loop(monday);
    NotebookSearch search(store, loop);
    const auto count = [&](const char* words) {
        std::optional<std::size_t> found;
        search.find({.words = words}, [&found](const NotesFound& answer) { found = answer.count; });
        EXPECT_TRUE(loop.queue.runUntil([&found] { return found.has_value(); }));
        return found.value_or(0);
    };
    EXPECT_EQ(count("many"), 120u);
    store.update("n7", titled("Kettle"), [](const NotebookVerdict&) {});
    store.update(
        "n8", [](Note& note) { note.archived = true; }, [](const NotebookVerdict&) {});
    EXPECT_EQ(count("many"), 118u);
    EXPECT_EQ(count("kettles"), 1u);
    store.delete_("n7", [](const NotebookVerdict&) {});
    EXPECT_EQ(count("kettles"), 0u);
    search.find({.words = "many"}, [](const NotesFound&) { FAIL() << "answered after its end"; });
}

} // namespace
} // namespace quorvell
