#include "Quorvell/notebook/NotebookStore.h"

#include "FileSizeLimit.h"
#include "OrdinaryUser.h"
#include "PostQueue.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using test::readText;
using test::writeText;

constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h;

Note noteOf(const std::string& id, const std::string& title, const std::string& body = "")
{
    return {.id = id, .title = title, .body = body, .created = monday, .updated = monday};
}

/// A notebook in a temporary folder, whose main thread is the test.
struct Desk {
    test::TemporaryFolder folder;
    test::PostQueue posts;
    VirtualScheduler clock;
    NotebookPorts ports;
    std::unique_ptr<FileWorker> worker = std::make_unique<FileWorker>(posts.poster());
    std::unique_ptr<NotebookStore> store;

    Desk() { setClock(monday + 24h); }

    void setClock(Instant now) { clock.wallClockAtStart = now - clock.now(); }
    NotebookStore& open()
    {
        auto opened = NotebookStore::open(folder.path(), *worker, clock, ports);
        EXPECT_EQ(opened.problem, "");
        store = std::move(opened.store);
        return *store;
    }

    /// Begins a change with `start` and waits for its verdict.
    NotebookVerdict result(const std::function<void(NotebookCallback)>& start)
    {
        std::optional<NotebookVerdict> verdict;
        start([&verdict](const NotebookVerdict& found) { verdict = found; });
        EXPECT_TRUE(posts.runUntil([&verdict] { return verdict.has_value(); }));
        return verdict.value_or(NotebookVerdict{});
    }
    NotebookVerdict add(const Note& note)
    {
        return result([&](NotebookCallback done) { store->add(note, std::move(done)); });
    }
    NotebookVerdict update(const std::string& id, const FullNotebook::Change& change)
    {
        return result([&](NotebookCallback done) { store->update(id, change, std::move(done)); });
    }
    void reload()
    {
        bool isDone = false;
        store->reload([&isDone] { isDone = true; });
        EXPECT_TRUE(posts.runUntil([&isDone] { return isDone; }));
    }
    /// What a program that starts now would see.
    std::vector<Note> stored() const
    {
        auto content = readNoteFolder(folder.path(), monday);
        return content ? content->notes : std::vector<Note>{};
    }
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            if (entry.path().filename() != NoteHistory::folderName)
                names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
};

FullNotebook::Change titled(const std::string& title)
{
    return [title](Note& note) { note.title = title; };
}

TEST(NotebookStore, keepsWhatItConfirms)
{
    Desk desk;
    NotebookStore& store = desk.open();
    Note note = noteOf("aaaa11112222", "Shopping", "milk\r\neggs\r\n");
    note.question = "a\r\nb\xFF";
    note.confirmed = true;
    note.image = "../x.png";
    EXPECT_TRUE(desk.add(note).isStored);
    EXPECT_TRUE(desk.add({.id = "bbbb", .title = "Later", .created = monday + 1h}).isStored);
    ASSERT_EQ(store.notes().size(), 2u);
    EXPECT_EQ(store.notes()[0].id, "bbbb");
    EXPECT_EQ(store.notes()[0].updated, monday + 1h);
    EXPECT_EQ(store.notes()[1].body, "milk\neggs\n");
    EXPECT_EQ(store.notes()[1].question, "a\nb\uFFFD");
    EXPECT_EQ(store.notes()[1].image, std::nullopt);
    EXPECT_EQ(desk.stored(), store.notes());

    const std::string path = desk.folder / "2026-11-16-shopping-aaaa.md";
    EXPECT_EQ(store.fileURL("aaaa11112222"), path);
    EXPECT_EQ(store.fileURL("none"), std::nullopt);
    struct stat found { };
    ASSERT_EQ(::stat(path.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777u, 0600u);
}

TEST(NotebookStore, changesOneNoteInItsFile)
{
    Desk desk;
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "Old title")).isStored);
    EXPECT_TRUE(desk.update("aaaa",
                        [](Note& note) {
                            note.id = "other";
                            note.created += 1h;
                            note.title = "New title";
                        })
                    .isStored);
    EXPECT_EQ(store.note("aaaa")->title, "New title");
    EXPECT_EQ(store.note("aaaa")->created, monday);
    EXPECT_EQ(store.note("aaaa")->updated, monday + 24h);
    EXPECT_FALSE(store.note("aaaa")->personEdited);
    desk.setClock(monday - 24h); // somebody sets the clock back
    EXPECT_TRUE(
        desk.result([&](NotebookCallback done) { store.edit("aaaa", titled("By hand"), std::move(done)); }).isStored);
    EXPECT_EQ(store.note("aaaa")->updated, monday + 24h + 1ms);
    EXPECT_TRUE(store.note("aaaa")->personEdited);
    EXPECT_EQ(desk.files(), std::vector<std::string>{"2026-11-16-old-title-aaaa.md"});
    EXPECT_EQ(desk.stored(), store.notes());

    EXPECT_NE(desk.update("none", titled("x")).problem, "");
    EXPECT_NE(desk.add(noteOf("aaaa", "Again")).problem, "");
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST(NotebookStore, showsChangesAtOnceAndWritesThemInOrder)
{
    Desk desk;
    NotebookStore& store = desk.open();
    std::vector<int> answers;
    const auto answer = [&answers](int number) {
        return [&answers, number](
                   const NotebookVerdict& verdict) { answers.push_back(verdict.isStored ? number : -number); };
    };
    store.add(noteOf("aaaa", "a"), answer(1));
    for (int number = 2; number <= 6; ++number)
        store.update(
            "aaaa", [](Note& note) { note.body += "x"; }, answer(number));
    EXPECT_EQ(store.note("aaaa")->body, "xxxxx");
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(desk.posts.runUntil([&] { return answers.size() == 6; }));
    EXPECT_EQ(answers, (std::vector<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(desk.stored(), store.notes());
    EXPECT_EQ(desk.files().size(), 1u);
}

TEST(NotebookStore, putsBackWhatCannotBeWritten)
{
    Desk desk;
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "old")).isStored);
    std::vector<std::string> problems;
    const auto remember = [&problems](const NotebookVerdict& verdict) { problems.push_back(verdict.problem); };
    const test::FileSizeLimit limit(4000);
    store.update(
        "aaaa", [](Note& note) { note.body = std::string(9000, 'x'); }, remember);
    store.update("aaaa", titled("b"), remember);
    store.add(noteOf("bbbb", "never", std::string(9000, 'x')), remember);
    store.update("bbbb", titled("never either"), remember);
    EXPECT_EQ(store.note("aaaa")->body.size(), 9000u);
    EXPECT_EQ(store.notes().size(), 2u);
    ASSERT_TRUE(desk.posts.runUntil([&] { return problems.size() == 4; }));
    std::sort(problems.begin(), problems.end());
    EXPECT_EQ(problems[0], "");
    for (const std::size_t failed : {1u, 2u, 3u})
        EXPECT_NE(problems[failed].find(desk.folder.path()), std::string::npos) << problems[failed];
    ASSERT_EQ(store.notes().size(), 1u);
    EXPECT_EQ(store.note("aaaa")->body, "old");
    EXPECT_EQ(store.note("aaaa")->title, "b");
    EXPECT_EQ(desk.stored(), store.notes());
    EXPECT_EQ(desk.files().size(), 1u);
}

TEST(NotebookStore, overwritesNoFileThatIsNotOnRecord)
{
    Desk desk;
    const std::string notes[] = {"2026-11-16-a-aaaa.md", "2026-11-16-a-aaaa-aaaa11112222.md"};
    for (const std::string& name : notes)
        writeText(desk.folder / name, "of somebody else");
    NotebookStore& store = desk.open();
    EXPECT_TRUE(store.notes().empty());
    ASSERT_TRUE(desk.add(noteOf("aaaa11112222", "a")).isStored);
    EXPECT_EQ(store.fileURL("aaaa11112222"), desk.folder / "2026-11-16-a-aaaa-aaaa11112222-2.md");
    ASSERT_TRUE(desk.add(noteOf("../../bad", "a")).isStored);
    for (const std::string& name : notes)
        EXPECT_EQ(readText(desk.folder / name), "of somebody else");
    EXPECT_EQ(desk.files().size(), 4u);
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST(NotebookStore, readsTheFolderAsPeopleLeaveIt)
{
    const auto file = [](const std::string& title, Instant updated) {
        Note note = noteOf("aaaa", title);
        note.updated = updated;
        return NoteFile::encode(note);
    };
    Desk desk;
    writeText(desk.folder / "b.md", file("older", monday + 1h));
    writeText(desk.folder / "c.md", file("newer", monday + 2h));
    writeText(desk.folder / "d.md", file("as new, but read later", monday + 2h));
    const std::string otherwise = NoteFile::encode(noteOf("cccc", "no note"));
    const std::vector<std::pair<std::string, std::string>> ignored = {{".e.md", otherwise}, {"#e.md#", otherwise},
        {"e.md~", otherwise}, {"e.MD", otherwise}, {".md", otherwise}, {"e.txt", otherwise},
        {"latin.md", otherwise + "\xE9"}, {"plain.md", "# no note\n"},
        {"large.md", otherwise + std::string(maximumNoteBytes, 'x')}};
    for (const auto& [name, text] : ignored)
        writeText(desk.folder / name, text);
    std::filesystem::create_directory(desk.folder / "folder.md");
    ASSERT_EQ(::mkfifo((desk.folder / "pipe.md").c_str(), 0600), 0);

    NotebookStore& store = desk.open();
    ASSERT_EQ(store.notes().size(), 1u);
    EXPECT_EQ(store.notes()[0].title, "newer");
    EXPECT_EQ(store.fileURL("aaaa"), desk.folder / "c.md");
    ASSERT_TRUE(desk.update("aaaa", titled("newest")).isStored);
    EXPECT_EQ(NoteFile::decode(readText(desk.folder / "c.md"), monday)->title, "newest");
    for (const auto& [name, text] : ignored)
        EXPECT_EQ(readText(desk.folder / name), text) << name;
}

TEST(NotebookStore, reloadsUnderWaitingChanges)
{
    Desk desk;
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a")).isStored);
    ASSERT_TRUE(desk.add(noteOf("bbbb", "b")).isStored);
    Note outside = noteOf("bbbb", "from outside");
    outside.created = monday - 1h;
    outside.updated = monday + 48h;
    writeText(desk.folder / "copy.md", NoteFile::encode(outside));
    std::filesystem::remove(desk.folder / "2026-11-16-a-aaaa.md");
    int stored = 0;
    desk.store->reload(nullptr);
    for (const char* title : {"c", "d"})
        store.update("aaaa", titled(title), [&](const NotebookVerdict& verdict) { stored += verdict.isStored; });
    ASSERT_TRUE(desk.posts.runUntil([&] { return stored == 2; }));
    EXPECT_EQ(store.note("aaaa")->title, "d");
    EXPECT_EQ(store.note("bbbb"), outside);
    EXPECT_EQ(store.fileURL("bbbb"), desk.folder / "copy.md");
    desk.reload();
    EXPECT_EQ(store.note("aaaa")->title, "d");
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST(NotebookStore, writesWhatIsWaitingWhenItEnds)
{
    Desk desk;
    NotebookStore& store = desk.open();
    int answers = 0;
    store.add(noteOf("aaaa", "a"), [&answers](const NotebookVerdict&) { ++answers; });
    for (const char* title : {"b", "c"})
        store.update("aaaa", titled(title), [&answers](const NotebookVerdict&) { ++answers; });
    desk.store = nullptr;
    desk.worker = nullptr;
    desk.posts.runPosted();
    EXPECT_EQ(answers, 0);
    ASSERT_EQ(desk.stored().size(), 1u);
    EXPECT_EQ(desk.stored()[0].title, "c");
    EXPECT_EQ(desk.files().size(), 1u);
}

TEST(NotebookStore, saysWhatIsWrongWithTheFolder)
{
    Desk desk;
    writeText(desk.folder / "file", "");
    const auto opened = NotebookStore::open(desk.folder / "file/Notebook", *desk.worker, desk.clock);
    EXPECT_EQ(opened.store, nullptr);
    EXPECT_NE(opened.problem.find(desk.folder / "file/Notebook"), std::string::npos);

    const test::OrdinaryUser user(desk.folder.path().c_str());
    ASSERT_TRUE(user.isOrdinary());
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a")).isStored);
    const std::vector<Note> before = store.notes();
    ASSERT_EQ(::chmod(desk.folder.path().c_str(), 0500), 0);
    EXPECT_NE(desk.update("aaaa", titled("b")).problem.find("may not write"), std::string::npos);
    EXPECT_NE(desk.add(noteOf("bbbb", "b")).problem, "");
    EXPECT_EQ(store.notes(), before);
    EXPECT_EQ(desk.stored(), before);
    ASSERT_EQ(::chmod(desk.folder.path().c_str(), 0700), 0);
    EXPECT_TRUE(desk.update("aaaa", titled("b")).isStored);

    std::filesystem::remove_all(desk.folder.path());
    EXPECT_NE(desk.update("aaaa", titled("c")).problem.find("is gone"), std::string::npos);
    desk.reload();
    EXPECT_EQ(store.note("aaaa")->title, "b");
}

} // namespace
} // namespace quorvell
