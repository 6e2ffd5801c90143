// SPDX-License-Identifier: MIT
// Catches notes confirmed and not kept, files overwritten that others changed, changes out of order.
#include "Quorvell/notebook/NotebookStore.h"

#include "FileSizeLimit.h"
#include "NotebookDesk.h"
#include "OrdinaryUser.h"
#include "Quorvell/notebook/NoteFileRules.h"

namespace quorvell {
namespace {

using test::readText;
using test::writeText;

struct NotebookStoreTest : testing::Test {
    Desk desk;
};

TEST_F(NotebookStoreTest, keepsWhatItConfirms)
{
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

TEST_F(NotebookStoreTest, changesOneNoteInItsFile)
{
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "Old title")).isStored);
    const auto change = [](Note& note) {
        note.id = "other";
        note.created += 1h;
        note.title = "New title";
    };
    EXPECT_TRUE(desk.update("aaaa", change).isStored);
    EXPECT_EQ(store.note("aaaa")->title, "New title");
    EXPECT_EQ(store.note("aaaa")->created, monday);
    EXPECT_EQ(store.note("aaaa")->updated, monday + 24h);
    EXPECT_FALSE(store.note("aaaa")->personEdited);
    desk.setClock(monday - 24h); // somebody sets the clock back
    EXPECT_TRUE(desk.edit("aaaa", titled("By hand")).isStored);
    EXPECT_EQ(store.note("aaaa")->updated, monday + 24h + 1ms);
    EXPECT_TRUE(store.note("aaaa")->personEdited);
    EXPECT_EQ(desk.files(), std::vector<std::string>{"2026-11-16-old-title-aaaa.md"});
    EXPECT_EQ(desk.stored(), store.notes());

    EXPECT_NE(desk.update("none", titled("x")).problem, "");
    EXPECT_NE(desk.add(noteOf("aaaa", "Again")).problem, "");
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST_F(NotebookStoreTest, showsChangesAtOnceAndWritesThemInOrder)
{
    NotebookStore& store = desk.open();
    std::vector<int> answers;
    const auto answer = [&answers](int number) {
        return [&, number](const auto& verdict) { answers.push_back(verdict.isStored ? number : -number); };
    };
    store.add(noteOf("aaaa", "a"), answer(1));
    for (int number = 2; number <= 6; ++number)
        store.update("aaaa", appended("x"), answer(number));
    EXPECT_EQ(store.note("aaaa")->body, "xxxxx");
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(desk.posts.runUntil([&] { return answers.size() == 6; }));
    EXPECT_EQ(answers, (std::vector<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(desk.stored(), store.notes());
    EXPECT_EQ(desk.files().size(), 1u);
}

TEST_F(NotebookStoreTest, putsBackWhatCannotBeWritten)
{
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "old")).isStored);
    std::vector<std::string> problems;
    const auto remember = [&problems](const NotebookVerdict& verdict) { problems.push_back(verdict.problem); };
    const test::FileSizeLimit limit(4000);
    store.update("aaaa", appended(std::string(9000, 'x')), remember);
    store.update("aaaa", titled("b"), remember);
    store.add(noteOf("bbbb", "never", std::string(9000, 'x')), remember);
    store.update("bbbb", titled("never either"), remember);
    EXPECT_EQ(store.note("aaaa")->body.size(), 9003u);
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

TEST_F(NotebookStoreTest, overwritesNoFileThatIsNotOnRecord)
{
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

TEST_F(NotebookStoreTest, readsTheFolderAsPeopleLeaveIt)
{
    const auto file = [](const std::string& title, Instant updated) {
        Note note = noteOf("aaaa", title);
        note.updated = updated;
        return NoteFile::encode(note);
    };
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
    std::filesystem::remove(desk.folder / "c.md");
    desk.reload();
    EXPECT_EQ(store.note("aaaa")->title, "as new, but read later") << "what lost counts once the other is gone";
    EXPECT_EQ(store.fileURL("aaaa"), desk.folder / "d.md");
}

TEST_F(NotebookStoreTest, reloadsUnderWaitingChanges)
{
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

TEST_F(NotebookStoreTest, writesWhatIsWaitingWhenItEnds)
{
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

TEST_F(NotebookStoreTest, saysWhatIsWrongWithTheFolder)
{
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

TEST_F(NotebookStoreTest, keepsAVersionAMinuteUnlessTheAuthorChanges)
{
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "0")).isStored);
    struct Row {
        const char* name;
        std::chrono::seconds later;
        NoteAuthor by;
        FullNotebook::Change change;
        std::size_t versions;
    };
    const auto assistant = NoteAuthor::quorvell;
    const Row rows[] = {
        {"the first change", 1s, assistant, appended("1"), 1},
        {"a day after that version", 1s, assistant, appended("2"), 2},
        {"soon after", 1s, assistant, appended("-"), 2},
        {"by the person", 1s, NoteAuthor::person, appended("3"), 3},
        {"by the person again", 1s, NoteAuthor::person, appended("4"), 3},
        {"nothing that versions keep", 120s, assistant, [](Note& note) { note.pinned = true; }, 3},
        {"later", 120s, assistant, titled("b"), 4},
        {"later, steps only", 120s, assistant, [](Note& note) { note.steps = {"x"}; }, 5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        desk.clock.advance(row.later);
        EXPECT_TRUE((row.by == assistant ? desk.update("aaaa", row.change) : desk.edit("aaaa", row.change)).isStored);
        EXPECT_EQ(desk.history("aaaa").size(), row.versions);
    }
    EXPECT_EQ(desk.history("aaaa")[1], (NoteVersion{desk.history("aaaa")[1].date, "a", "012-34", {}}));
    EXPECT_TRUE(desk.ask(&NotebookStore::restoreVersion, "aaaa", desk.history("aaaa").back()).isStored);
    EXPECT_EQ(store.note("aaaa")->body, "0");
    EXPECT_EQ(desk.history("aaaa").size(), 6u) << "what was current before went into the history";
    for (int index = 0; index < 25; ++index) {
        desk.clock.advance(120s);
        EXPECT_TRUE(desk.update("aaaa", appended("x")).isStored);
    }
    EXPECT_EQ(desk.history("aaaa").size(), NoteHistory::maximumVersions);
    EXPECT_EQ(desk.history("aaaa")[0].body.size(), 25u) << "newest first";
    ASSERT_TRUE(desk.add(noteOf("../up", "a")).isStored);
    EXPECT_TRUE(desk.update("../up", appended("x")).isStored);
    EXPECT_TRUE(desk.history("../up").empty()) << "an id that leads out of the folder";
}

TEST_F(NotebookStoreTest, listensToTheFolderAfterABurstOfChanges)
{
    NotebookStore& store = desk.open();
    std::vector<std::string> heard;
    const NotebookObservation observation = store.observe([&heard](const NotebookChanges& changes) {
        heard.insert(heard.end(), changes.changed.begin(), changes.changed.end());
        for (const std::string& id : changes.gone)
            heard.push_back("-" + id);
    });
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a")).isStored);
    EXPECT_TRUE(store.freshlyChanged("aaaa"));
    writeText(desk.folder / "b.md", NoteFile::encode(noteOf("bbbb", "b")));
    store.folderChanged();
    desk.clock.advance(500ms);
    store.folderChanged();
    desk.clock.advance(599ms);
    desk.posts.runPosted();
    EXPECT_EQ(store.notes().size(), 1u);
    desk.clock.advance(1ms);
    EXPECT_TRUE(desk.posts.runUntil([&store] { return store.notes().size() == 2; }));
    std::filesystem::remove(desk.folder / "b.md");
    desk.reload();
    EXPECT_EQ(heard, (std::vector<std::string>{"aaaa", "bbbb", "-bbbb"}));
    desk.clock.advance(2s);
    EXPECT_FALSE(store.freshlyChanged("aaaa"));
}

class FakeTrash final : public Trash {
public:
    bool put(const std::string& path) override
    {
        put_.push_back(std::filesystem::path(path).filename());
        return takes && std::filesystem::remove(path);
    }

    bool takes = true;
    std::vector<std::string> put_;
};

TEST_F(NotebookStoreTest, deletesIntoTheTrashAndForgetsForGood)
{
    FakeTrash trash;
    desk.ports.trash = &trash;
    NotebookStore& store = desk.open();
    for (const char* id : {"aaaa", "bbbb"})
        ASSERT_TRUE(desk.add(noteOf(id, "x", "text of " + std::string(id))).isStored);
    store.update("aaaa", titled("y"), [](const NotebookVerdict&) {});
    EXPECT_TRUE(desk.ask(&NotebookStore::delete_, "aaaa").isStored);
    EXPECT_EQ(trash.put_, std::vector<std::string>{"2026-11-16-x-aaaa.md"});
    trash.takes = false;
    EXPECT_TRUE(desk.ask(&NotebookStore::delete_, "bbbb").isStored);
    EXPECT_EQ(desk.history("bbbb").at(0).body, "text of bbbb") << "no trash, but not lost either";
    EXPECT_FALSE(desk.ask(&NotebookStore::delete_, "bbbb").isStored);
    EXPECT_TRUE(store.notes().empty() && desk.files().empty());

    ASSERT_TRUE(desk.add(noteOf("cccc", "stays")).isStored);
    for (const auto& [id, by] : {std::pair("dddd", NoteAuthor::person), {"eeee", NoteAuthor::quorvell}})
        ASSERT_TRUE(desk.ask(&NotebookStore::remember, "a fact", by, id, monday).isStored);
    EXPECT_EQ(store.keptFacts().at(0).id, "dddd");
    EXPECT_EQ(store.suggestions().at(0).id, "eeee");
    EXPECT_EQ(store.visibleToQuorvell().size(), 2u);
    EXPECT_TRUE(desk.edit("dddd", appended("more")).isStored);
    EXPECT_TRUE(desk.ask(&NotebookStore::forgetAll).isStored);
    EXPECT_EQ(store.notes().size(), 1u);
    EXPECT_TRUE(desk.history("dddd").empty());
    EXPECT_EQ(desk.files().size(), 1u);
}

TEST_F(NotebookStoreTest, keepsPicturesAndTicks)
{
    struct Converter final : PictureConverter {
        std::optional<std::string> png(std::string_view picture) const override
        {
            return picture == "bad" ? std::nullopt : std::optional("PNG of " + std::string(picture));
        }
    };
    const Converter converter;
    desk.ports.pictures = &converter;
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "* [x] one\n - [ ] two\n- [y] none\n+ [ ] three")).isStored);
    ASSERT_TRUE(desk.add(noteOf("a/b", "b")).isStored);
    EXPECT_EQ(store.pictureURL(*store.note("aaaa")), std::nullopt);
    EXPECT_TRUE(desk.ask(&NotebookStore::savePicture, "aaaa", "a cat").isStored);
    EXPECT_EQ(store.note("aaaa")->image, "Pictures/aaaa.png");
    EXPECT_EQ(readText(store.pictureURL(*store.note("aaaa")).value_or("")), "PNG of a cat");
    for (const auto& [id, picture] : {std::pair("aaaa", "bad"), {"a/b", "a cat"}, {"none", "a cat"}})
        EXPECT_FALSE(desk.ask(&NotebookStore::savePicture, id, picture).isStored) << id;

    EXPECT_EQ(withToggledTask(store.note("aaaa")->body, 0), "* [ ] one\n - [ ] two\n- [y] none\n+ [ ] three");
    EXPECT_EQ(withToggledTask(store.note("aaaa")->body, 2), "* [x] one\n - [ ] two\n- [y] none\n+ [x] three");
    EXPECT_EQ(withToggledTask(store.note("aaaa")->body, 3), std::nullopt);
    ASSERT_TRUE(desk.update("aaaa", [](Note& note) { note.steps = {"x", "y"}; }).isStored);
    for (const auto& [step, isChecked] : {std::pair(1, true), {0, true}, {1, false}, {7, true}})
        EXPECT_TRUE(desk.ask(&NotebookStore::setChecked, "aaaa", step, isChecked).isStored);
    EXPECT_TRUE(desk.ask(&NotebookStore::toggleTask, "aaaa", 0u).isStored);
    EXPECT_TRUE(store.note("aaaa")->body.starts_with("* [ ] one"));
    EXPECT_EQ(store.note("aaaa")->checked, std::vector<std::int64_t>{0});
}

} // namespace
} // namespace quorvell
