#include "Quorvell/tools/NotebookTools.h"

#include "Quorvell/tools/NoteSearch.h"
#include "QuorvellCore/text/Characters.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h;

class NotesInMemory final : public Notebook {
public:
    const std::vector<Note>& notes() const override { return list; }
    std::optional<Note> note(const std::string& id) const override
    {
        for (const Note& note : list)
            if (note.id == id)
                return note;
        return std::nullopt;
    }
    void add(Note note, NotebookCallback done) override
    {
        if (problem.empty())
            list.insert(list.begin(), std::move(note));
        waiting.push_back([this, done = std::move(done)] { done({.isStored = problem.empty(), .problem = problem}); });
    }
    void update(const std::string&, std::function<void(Note&)>, NotebookCallback) override { }

    std::vector<Note> list;
    std::string problem;
    std::vector<std::function<void()>> waiting; ///< Answers to writes that are not durable yet.
};

struct Bench {
    NotesInMemory notebook;
    ToolRegistry registry;

    Bench()
    {
        registerNotebookTools(registry, notebook,
            {.now = [] { return monday; },
                .newID = [] { return "newnewnewnew"; },
                .calendar = *Calendar::create("Asia/Tokyo", "en_GB")});
    }

    /// What the tool answers, as JSON text; empty while it has not.
    std::string answer(const std::string& tool, const std::string& arguments)
    {
        auto text = std::make_shared<std::string>();
        const ToolHandler* owner = registry.owner(tool);
        if (!owner)
            return "no owner";
        (*owner)(LiveFunctionCall::fromArgumentsText("1", tool, arguments, false),
            ToolReply([text](const Json& result) { *text = dumpJson(result); }));
        EXPECT_TRUE(tool != "keep_note" || notebook.waiting.empty() || text->empty())
            << "answered before it was durable";
        for (const auto& finish : std::exchange(notebook.waiting, {}))
            finish();
        return *text;
    }
};

TEST(NotebookTools, keepNotes)
{
    struct Row {
        const char* arguments;
        const char* title;
        const char* body;
    };
    const Row rows[] = {
        {R"({"title": "Shopping", "text": "milk"})", "Shopping", "milk"},
        {R"({"title": " Two\n lines ", "text": " as it stands\n"})", "Two lines", " as it stands\n"},
        {R"({"title": "Only a title"})", "Only a title", ""},
        {R"({"text": "\n First line \nsecond"})", "First line", "\n First line \nsecond"},
        {R"({"title": "", "text": "one two three four five six seven eight nine ten eleven twelve thirteen"})",
            "one two three four five six seven eight nine ten eleven",
            "one two three four five six seven eight nine ten eleven twelve thirteen"},
        {R"({"text": "milk", "kind": "note", "plan_update": {}})", "milk", "milk"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        Bench bench;
        EXPECT_EQ(bench.answer("keep_note", row.arguments),
            std::string(R"({"status":"kept","id":"newnewnewnew","title":")") + row.title + "\"}");
        const Note expected{.id = "newnewnewnew",
            .title = row.title,
            .body = row.body,
            .created = monday,
            .updated = monday,
            .author = NoteAuthor::quorvell,
            .origin = NoteOrigin::conversation};
        EXPECT_EQ(bench.notebook.list, std::vector<Note>{expected});
    }
    Bench bench;
    EXPECT_NE(bench.answer("keep_note", R"({"text": "seen", "kind": "clip"})"), "");
    EXPECT_EQ(bench.notebook.list[0].kind, NoteKind::clip);
    EXPECT_TRUE(isUntrusted(bench.notebook.list[0].origin));
}

TEST(NotebookTools, sayWhatIsWrongWithARequest)
{
    struct Row {
        const char* tool;
        std::string arguments;
        const char* says;
    };
    const Row rows[] = {
        {"keep_note", "{}", "title and text are both missing"},
        {"keep_note", R"({"title": " \n", "text": "\t"})", "title and text are both missing"},
        {"keep_note", R"({"title": 7})", "title and text are both missing"},
        {"keep_note", R"({"text": "a", "kind": "about_me"})", "kind must be"},
        {"keep_note", R"({"title": ")" + std::string(201, 'x') + "\"}", "has 201 characters; at most 200"},
        {"keep_note", R"({"title": "a", "text": ")" + std::string(100'001, 'x') + "\"}", "at most 100000"},
        {"find_in_notebook", "{}", "query is missing"},
        {"find_in_notebook", R"({"query": "a", "kind": "notes"})", "kind must be one of"},
        {"read_note", "{}", "no note with that id"},
        {"read_note", R"({"id": "none"})", "no note with that id"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.substr(0, 50));
        Bench bench;
        const std::string answer = bench.answer(row.tool, row.arguments);
        EXPECT_TRUE(answer.starts_with("{\"error\":")) << answer;
        EXPECT_NE(answer.find(row.says), std::string::npos) << answer;
        EXPECT_TRUE(bench.notebook.list.empty());
    }
    Bench full;
    full.notebook.problem = "The disk is full.";
    EXPECT_EQ(full.answer("keep_note", R"({"text": "a"})"), R"({"error":"The disk is full."})");
}

/// Newest first, as a notebook lists them.
std::vector<Note> someNotes()
{
    return {
        {.id = "1",
            .title = "Dentist",
            .body = "Call Dr Müller's practice",
            .created = monday,
            .remindAt = monday + 24h},
        {.id = "2",
            .title = "Ideas",
            .body = "a dentist's chair for the garden",
            .created = monday,
            .origin = NoteOrigin::web},
        {.id = "3", .kind = NoteKind::howTo, .title = "Call the dentist", .created = monday, .steps = {"Dial", "Wait"}},
        {.id = "4", .kind = NoteKind::aboutMe, .title = "Dentist fear", .created = monday},
        {.id = "5", .title = "Old dentist", .created = monday, .archived = true},
        {.id = "6", .kind = NoteKind::aboutMe, .title = "Has a dentist", .created = monday, .confirmed = true},
    };
}

TEST(NotebookTools, findVisibleNotesBestFirst)
{
    struct Row {
        const char* arguments;
        const char* ids;
        int count;
    };
    const Row rows[] = {
        {R"({"query": "dentist"})", "1362", 4},
        {R"({"query": "DENT!"})", "1362", 4},
        {R"({"query": "entist"})", "", 0},
        {R"({"query": "call dentist"})", "31", 2},
        {R"({"query": "müller"})", "1", 1},
        {R"({"query": "dial"})", "3", 1},
        {R"({"query": "dentist", "kind": "note"})", "12", 2},
        {R"({"query": "dentist", "kind": "about_me"})", "6", 1},
        {R"({"query": "dentist", "limit": 2})", "13", 4},
        {R"({"query": "dentist", "limit": "1"})", "1", 4},
        {R"({"query": "dentist", "limit": -5})", "1", 4},
        {R"({"query": ""})", "1236", 4},
        {R"({"query": "?!"})", "1236", 4},
        {R"({"query": "fear"})", "", 0},
    };
    Bench bench;
    bench.notebook.list = someNotes();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        const auto answer = parseJson(bench.answer("find_in_notebook", row.arguments));
        ASSERT_TRUE(answer);
        EXPECT_EQ(readString(*answer, "status"), "found");
        EXPECT_EQ(readInteger(*answer, "count"), row.count);
        std::string ids;
        for (const Json& note : *memberOf(*answer, "notes"))
            ids += readString(note, "id").value_or("?");
        EXPECT_EQ(ids, row.ids);
    }
    EXPECT_EQ(bench.answer("find_in_notebook", R"({"query": "garden"})"),
        R"({"status":"found","count":1,"notes":[{"id":"2","kind":"note","title":"Ideas",)"
        R"("snippet":"a dentist's chair for the garden","created":"2026-11-17 02:00","untrusted":true}]})");

    bench.notebook.list.assign(30, {.id = "7", .title = "Many", .created = monday});
    for (const auto& [arguments, shown] :
        {std::pair(R"({"query": "many"})", 5u), {R"({"query": "many", "limit": 99})", 20u}}) {
        const auto answer = parseJson(bench.answer("find_in_notebook", arguments));
        EXPECT_EQ(memberOf(*answer, "notes")->size(), shown);
    }
}

TEST(NotebookTools, readVisibleNotes)
{
    Bench bench;
    bench.notebook.list = someNotes();
    EXPECT_EQ(bench.answer("read_note", R"({"id": "1"})"),
        R"({"status":"read","id":"1","kind":"note","title":"Dentist","text":"Call Dr Müller's practice",)"
        R"("created":"2026-11-17 02:00","remind_at":"2026-11-18 02:00"})");
    EXPECT_EQ(bench.answer("read_note", R"({"id": "3"})"),
        R"({"status":"read","id":"3","kind":"how_to","title":"Call the dentist","text":"1. Dial\n2. Wait","created":"2026-11-17 02:00"})");
    for (const char* hidden : {R"({"id": "4"})", R"({"id": "5"})"})
        EXPECT_TRUE(bench.answer("read_note", hidden).starts_with("{\"error\":")) << hidden;
    bench.notebook.list[0].body = std::string(30'000, 'x');
    const auto answer = parseJson(bench.answer("read_note", R"({"id": "1"})"));
    EXPECT_EQ(readString(*answer, "text")->size(), 20'000u);
    EXPECT_EQ(readBool(*answer, "truncated"), true);
}

TEST(NoteSearch, showsWhereTheWordsAre)
{
    std::string words;
    for (int index = 100; index < 200; ++index)
        words += "w" + std::to_string(index) + "\n ";
    struct Row {
        const char* name;
        std::string body;
        const char* query;
        std::string starts;
        std::string ends;
    };
    const Row rows[] = {
        {"short text whole", " one\n\ntwo ", "two", "one two", "one two"},
        {"nothing to show", "", "two", "", ""},
        {"a little before the word", words, "w150", "…w145 w146 w147 w148 w149 w150 w151", "…"},
        {"its end", words, "W199", "…w194", "w199"},
        {"the beginning where the word is elsewhere", words, "title", "w100 w101", "…"},
        {"one endless word", std::string(5000, 'x'), "x", "xxx", "x…"},
        {"beyond the first pages", std::string(30'000, '.') + " two", "two", "...", "…"},
        {"cut inside a character", std::string(19'999, ' ') + "é", "é", "\uFFFD", "…"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string snippet = noteSnippet({.body = row.body}, row.query);
        EXPECT_TRUE(snippet.starts_with(row.starts) && snippet.ends_with(row.ends)) << snippet;
        EXPECT_LE(characterCount(snippet), 162u);
    }
}

} // namespace
} // namespace quorvell
