// SPDX-License-Identifier: MIT
// What other programs, the disk and the user do to the folder behind the store's back.
#include "FileSizeLimit.h"
#include "NotebookDesk.h"
#include "OrdinaryUser.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "Quorvell/notebook/NotebookMove.h"
#include "Quorvell/notebook/NotebookTidying.h"

#include <utime.h>

namespace quorvell {

using test::readText;
using test::writeText;
namespace fs = std::filesystem;

struct NotebookFaultTest : testing::Test {
    Desk desk;
};

TEST(NotebookFault, outsideEditsAreReadBeforeTheyAreWrittenOver)
{
    const std::string file = "2026-11-16-a-aaaa.md";
    Note outside = noteOf("aaaa", "outside", "theirs");
    outside.updated = monday + 48h;
    Note other = noteOf("cccc", "c");
    other.created = monday - 1h;
    struct Row {
        const char* name;
        std::function<void(const Desk&)> happens;
        FullNotebook::Change change;
        const char* title;
        const char* body;
        const char* versions; ///< Bodies, newest first.
        std::size_t files;
    };
    const auto saved = [&](const Desk& desk) { writeText(desk.folder / file, NoteFile::encode(outside)); };
    const auto replaced = [&](const Desk& desk) {
        writeText(desk.folder / "x.tmp", NoteFile::encode(outside));
        fs::rename(desk.folder / "x.tmp", desk.folder / file);
    };
    const auto setBody = [](Note& note) { note.body = "ours"; };
    const auto pin = [](Note& note) { note.pinned = true; };
    const Row rows[] = {
        {"saved in place, another field changed", saved, pin, "outside", "theirs", "first ", 1},
        {"saved atomically, the same field changed", replaced, setBody, "outside", "ours", "theirs first ", 1},
        {"added to", saved, appended("+"), "outside", "theirs+", "theirs first ", 1},
        {"gone", [&](const Desk& desk) { fs::remove(desk.folder / file); }, setBody, "a", "ours", "first ", 1},
        {"renamed", [&](const Desk& desk) { fs::rename(desk.folder / file, desk.folder / "b.md"); }, setBody, "a",
            "ours", "first ", 1},
        {"made no note", [&](const Desk& desk) { writeText(desk.folder / file, "rubbish"); }, setBody, "a", "ours",
            "first ", 2},
        {"made another note", [&](const Desk& desk) { writeText(desk.folder / file, NoteFile::encode(other)); },
            setBody, "a", "ours", "first ", 2},
        {"only touched", [&](const Desk& desk) { ::utime((desk.folder / file).c_str(), nullptr); }, setBody, "a",
            "ours", "first ", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Desk desk;
        NotebookStore& store = desk.open();
        ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "first")).isStored);
        row.happens(desk);
        EXPECT_TRUE(desk.update("aaaa", row.change).isStored);
        EXPECT_EQ(store.note("aaaa")->title, row.title);
        EXPECT_EQ(store.note("aaaa")->body, row.body);
        std::string versions;
        for (const NoteVersion& version : desk.history("aaaa"))
            versions += version.body + " ";
        EXPECT_EQ(versions, row.versions);
        EXPECT_EQ(desk.files().size(), row.files);
        desk.reload();
        EXPECT_EQ(desk.stored(), store.notes());
    }
}

TEST_F(NotebookFaultTest, aThousandFilesChangeAtOnce)
{
    const auto write = [this](int number, const std::string& text) {
        const std::string id = "n" + std::to_string(number);
        writeText(desk.folder / (id + ".md"), NoteFile::encode(noteOf(id, text)));
    };
    for (int number = 0; number < 1000; ++number)
        write(number, "old");
    NotebookStore& store = desk.open();
    int heard = 0;
    const NotebookObservation observation =
        store.observe([&heard](const NotebookChanges& changes) { heard += static_cast<int>(changes.changed.size()); });
    for (int number = 0; number < 1000; ++number)
        write(number, number < 990 ? "new" : "old");
    for (int number = 0; number < 10; ++number)
        fs::remove(desk.folder / ("n" + std::to_string(number) + ".md"));
    desk.reload();
    EXPECT_EQ(store.notes().size(), 990u);
    EXPECT_EQ(heard, 980) << "what is the same is no news";
    EXPECT_EQ(
        std::count_if(store.notes().begin(), store.notes().end(), [](const Note& note) { return note.title == "new"; }),
        980);
    EXPECT_EQ(desk.stored(), store.notes());
    EXPECT_EQ(desk.history("n500").at(0).title, "old") << "what outside changes replaced is kept";
}

TEST_F(NotebookFaultTest, historyThatCannotBeWrittenStopsTheChange)
{
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "old")).isStored);
    writeText(desk.folder / NoteHistory::folderName, "a file where the folder should be");
    EXPECT_NE(desk.update("aaaa", appended("x")).problem, "");
    EXPECT_EQ(store.note("aaaa")->body, "old");
    EXPECT_TRUE(desk.update("aaaa", [](Note& note) { note.pinned = true; }).isStored) << "needs no history";
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST_F(NotebookFaultTest, aNoteThatCouldNotBeReadAgainIsRefused)
{
    NotebookStore& store = desk.open();
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "old")).isStored);
    EXPECT_NE(desk.update("aaaa", appended(std::string(maximumNoteBytes, 'x'))).problem.find("Shorten it"),
        std::string::npos);
    EXPECT_EQ(store.note("aaaa")->body, "old");
    EXPECT_EQ(desk.stored(), store.notes());
}

TEST_F(NotebookFaultTest, tidyingRemovesOnlyWhatIsOldAndOurs)
{
    const std::string gone = "0123456789ab";
    const std::string shared = "00000000000a";
    fs::create_directories(desk.folder / "Pictures");
    fs::create_directories(desk.folder / ".history");
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto put = [&](const std::string& name, std::chrono::hours age) {
        writeText(desk.folder / name, "x");
        const std::time_t time = std::chrono::system_clock::to_time_t(now - age);
        const utimbuf times{time, time};
        ::utime((desk.folder / name).c_str(), &times);
    };
    const std::string removed[] = {
        "Pictures/" + gone + ".png", ".history/" + gone + ".json", ".history/" + shared + ".json"};
    const std::string kept[] = {"Pictures/" + shared + ".png", "Pictures/holiday.png", "Pictures/" + gone + ".jpg",
        "Pictures/aaaa11112222.png", ".history/aaaa11112222.json", "Pictures/fedcba987654.png"};
    for (const std::string& name : removed)
        put(name, 25h);
    for (const std::string& name : kept)
        put(name, name.find("fedc") != std::string::npos ? 23h : 25h);
    Note note = noteOf("aaaa11112222", "a");
    note.image = "Pictures/" + shared + ".png";
    writeText(desk.folder / "a.md", NoteFile::encode(note));
    put("unfinished.md", 1h);
    tidyNotebook(desk.folder.path(), now);
    for (const std::string& name : removed)
        EXPECT_TRUE(fs::exists(desk.folder / name)) << "while a file cannot be read: " << name;
    fs::remove(desk.folder / "unfinished.md");
    tidyNotebook(desk.folder.path(), now);
    for (const std::string& name : removed)
        EXPECT_FALSE(fs::exists(desk.folder / name)) << name;
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(desk.folder / name)) << name;
}

TEST(NotebookFault, whatAKilledProgramLeftOfANoteGoesIntoItsHistory)
{
    const std::string id = "aaaa11112222";
    Note theirs = noteOf(id, "a", "theirs");
    Note other = noteOf("bbbb", "b", "of a note that is gone");
    Note before = noteOf(id, "a", "before");
    struct Row {
        const char* name;
        std::string left;
        const char* versions; ///< Bodies, newest first.
    };
    const Row rows[] = {
        {"another program's version", NoteFile::encode(theirs), "theirs before "},
        {"what the note says", NoteFile::encode(noteOf(id, "a", "now")), "before "},
        {"what its history knows", NoteFile::encode(before), "before "},
        {"another note", NoteFile::encode(other), "before "},
        {"no note", "---\nid: \"" + id, "before "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Desk desk;
        const std::string left = desk.folder / ".quorvell-0123456789abcdef.tmp";
        fs::create_directories(desk.folder / ".history");
        writeText(desk.folder / ".history/" + id + ".json", NoteHistory::text({NoteVersion::of(before)}));
        writeText(desk.folder / "a.md", NoteFile::encode(noteOf(id, "a", "now")));
        writeText(left, row.left);
        const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
        tidyNotebook(desk.folder.path(), now);
        const auto versions = [&] {
            std::string bodies;
            for (const NoteVersion& version : NoteHistory(desk.folder.path()).versions(id))
                bodies += version.body + " ";
            return bodies;
        };
        EXPECT_EQ(versions(), row.versions);
        EXPECT_TRUE(fs::exists(left)) << "another program may be writing it";
        const utimbuf longAgo{0, 0};
        ::utime(left.c_str(), &longAgo);
        tidyNotebook(desk.folder.path(), now);
        EXPECT_EQ(versions(), row.versions) << "once";
        EXPECT_FALSE(fs::exists(left));
    }
    // Where it cannot be kept it stays; what is forgotten does not come back.
    Desk desk;
    const std::string left = desk.folder / ".quorvell-0123456789abcdef.tmp";
    Note fact = theirs;
    fact.kind = NoteKind::aboutMe;
    writeText(desk.folder / "a.md", NoteFile::encode(fact));
    fact.body = "left";
    writeText(left, NoteFile::encode(fact));
    const utimbuf longAgo{0, 0};
    ::utime(left.c_str(), &longAgo);
    writeText(desk.folder / NoteHistory::folderName, "a file where the folder should be");
    tidyNotebook(desk.folder.path(), monday);
    EXPECT_TRUE(fs::exists(left));
    fs::remove(desk.folder / NoteHistory::folderName);
    desk.open();
    EXPECT_TRUE(desk.ask(&NotebookStore::forgetAll).isStored);
    EXPECT_FALSE(fs::exists(left));
}

TEST_F(NotebookFaultTest, movingKeepsBothAndLeavesTheSourceWholeWhenItFails)
{
    NotebookStore& store = desk.open();
    const test::TemporaryFolder elsewhere;
    const std::string target = elsewhere / "deep/Notebook";
    ASSERT_TRUE(desk.add(noteOf("aaaa", "a", "ours")).isStored);
    ASSERT_TRUE(desk.update("aaaa", appended("!")).isStored);
    writeText(desk.folder / "plain.txt", "no note");
    fs::create_directories(target + "/.history");
    writeText(target + "/2026-11-16-a-aaaa.md", "there before");
    writeText(target + "/.history/aaaa.json",
        NoteHistory::text({NoteVersion{.date = monday - 24h, .title = "a", .body = "older"}}));
    for (const std::string& bad :
        {desk.folder / "inside", desk.folder.path(), std::string("/proc/none"), std::string()}) {
        EXPECT_NE(desk.ask(&NotebookStore::moveNotebook, bad, nullptr).problem, "") << bad;
        EXPECT_EQ(desk.stored(), store.notes());
    }
    fs::create_symlink("loop", desk.folder / "loop");
    EXPECT_NE(desk.ask(&NotebookStore::moveNotebook, target, nullptr).problem, "") << "a file that cannot be read";
    EXPECT_FALSE(fs::exists(target + "/2026-11-16-a-aaaa-2.md")) << "what was copied before goes again";
    fs::remove(desk.folder / "loop");
    const FullNotebook::Entering enter = [&]() -> std::string {
        EXPECT_TRUE(fs::exists(target + "/plain.txt") && fs::exists(desk.folder / "plain.txt"))
            << "nothing is removed yet";
        return "no place to enter it";
    };
    EXPECT_EQ(desk.ask(&NotebookStore::moveNotebook, target, enter).problem, "no place to enter it");
    EXPECT_EQ(store.folder(), desk.folder.path());
    EXPECT_EQ(desk.stored(), store.notes());
    store.moveNotebook(target, nullptr, [](const NotebookVerdict& verdict) { EXPECT_EQ(verdict.problem, ""); });
    EXPECT_TRUE(desk.update("aaaa", appended("?")).isStored) << "changes meanwhile wait";
    EXPECT_EQ(store.folder(), target);
    EXPECT_EQ(store.note("aaaa")->body, "ours!?");
    EXPECT_EQ(store.fileURL("aaaa"), target + "/2026-11-16-a-aaaa-2.md");
    EXPECT_EQ(readText(target + "/2026-11-16-a-aaaa.md"), "there before");
    EXPECT_EQ(readText(target + "/plain.txt"), "no note");
    EXPECT_EQ(desk.history("aaaa").back().body, "older");
    EXPECT_TRUE(desk.files().empty());
}

} // namespace quorvell
