// A program that is killed while it writes notes loses and tears none: every file holds an old or a new version whole,
// and nothing that was confirmed is missing.
#include "PostQueue.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/notebook/NotebookStore.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <random>
#include <thread>

namespace quorvell {
namespace {

/// What the writing program says once a version is durable. Small enough to be written to a pipe in one piece.
struct Confirmed {
    int note;
    int version;
};

std::string idOf(int note)
{
    return "note" + std::to_string(note);
}

/// A text of 100 bytes to 60 kB that says which version it is from its first to its last byte.
std::string bodyOf(int note, int version)
{
    const std::string piece = std::to_string(note) + "/" + std::to_string(version) + "\n";
    std::string body;
    for (int index = 0; index < 10 + (version * 1009) % 6000; ++index)
        body += piece;
    return body;
}

int versionOf(const Note& note)
{
    return static_cast<int>(note.timesUsed);
}

/// Adds and rewrites notes, several at a time, until it is killed.
[[noreturn]] void writeForEver(const std::string& folder, int pipe)
{
    test::PostQueue posts;
    FileWorker worker(posts.poster());
    VirtualScheduler clock;
    auto opened = NotebookStore::open(folder, worker, clock);
    if (!opened.store)
        _exit(1);
    NotebookStore& store = *opened.store;
    int nextNote = static_cast<int>(store.notes().size());
    const std::function<void(int)> writeNext = [&](int note) {
        const int version = store.note(idOf(note)) ? versionOf(*store.note(idOf(note))) + 1 : 1;
        const auto confirm = [&, note, version](const NotebookVerdict& verdict) {
            const Confirmed confirmed{note, version};
            if (!verdict.isStored || ::write(pipe, &confirmed, sizeof(confirmed)) != sizeof(confirmed))
                _exit(2);
            writeNext(version % 5 == 0 ? nextNote++ : note);
        };
        if (version == 1)
            return store.add({.id = idOf(note),
                                 .title = "Note",
                                 .body = bodyOf(note, 1),
                                 .created = clock.wallClock(),
                                 .timesUsed = 1},
                confirm);
        store.update(
            idOf(note),
            [note, version](Note& changed) {
                changed.body = bodyOf(note, version);
                changed.timesUsed = version;
            },
            confirm);
    };
    for (int strand = 0; strand < 3; ++strand)
        writeNext(nextNote++);
    posts.runUntil([] { return false; });
    _exit(3);
}

/// Lets the program write until it has confirmed `count` versions and for `time` more, then kills it. Adds what it
/// confirmed to `confirmed`.
void writeAndKill(const std::string& folder, int count, std::chrono::microseconds time, std::map<int, int>& confirmed)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
        ::close(ends[0]);
        writeForEver(folder, ends[1]);
    }
    ::close(ends[1]);
    const auto kill = [writer, time] {
        std::this_thread::sleep_for(time);
        ::kill(writer, SIGKILL);
    };
    if (count == 0)
        kill();
    Confirmed next{};
    while (::read(ends[0], &next, sizeof(next)) == sizeof(next)) {
        confirmed[next.note] = std::max(confirmed[next.note], next.version);
        if (--count == 0)
            kill();
    }
    ::close(ends[0]);
    int status = 0;
    ASSERT_EQ(::waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer gave up by itself: " << WEXITSTATUS(status);
}

int countNoteFiles(const std::string& folder)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        count += isNoteFileName(entry.path().filename().string());
    return count;
}

TEST(NotebookKill, losesAndTearsNothing)
{
    const test::TemporaryFolder folder;
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> count(0, 20);
    std::uniform_int_distribution<int> microseconds(0, 4'000);
    std::map<int, int> confirmed;
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        const std::chrono::microseconds time(microseconds(random));
        ASSERT_NO_FATAL_FAILURE(writeAndKill(folder.path(), count(random), time, confirmed));
        const auto content = readNoteFolder(folder.path(), Instant{});
        ASSERT_TRUE(content);
        // One file for each note, and every file is a note.
        ASSERT_EQ(countNoteFiles(folder.path()), static_cast<int>(content->notes.size()));
        std::map<int, int> found;
        for (const Note& note : content->notes) {
            const int number = std::stoi(note.id.substr(4));
            ASSERT_EQ(note.body, bodyOf(number, versionOf(note)));
            found[number] = versionOf(note);
        }
        for (const auto& [note, version] : confirmed)
            ASSERT_GE(found[note], version) << idOf(note);
    }
    EXPECT_GT(confirmed.size(), 20u);
}

} // namespace
} // namespace quorvell
