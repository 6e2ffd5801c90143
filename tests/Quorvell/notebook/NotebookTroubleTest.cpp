// SPDX-License-Identifier: MIT
// Whatever happens to a program while it writes notes: every file holds an old or a new version whole, nothing that was
// confirmed is missing, and what could not be stored is told. One row a trouble; scripts/faults --notebook prints them.
#include "FileSizeLimit.h"
#include "NotebookDesk.h"
#include "OrdinaryUser.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "Quorvell/notebook/NotebookTidying.h"
#include "WriteLedger.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <random>

namespace {
std::chrono::microseconds lingering{0};
}

/// Stands before the system's. The instants before and after an exchange last longer, so that other programs meet the
/// one and kills the other.
extern "C" int renameat2(int folder, const char* from, int otherFolder, const char* to, unsigned flags) noexcept
{
    const auto linger = [flags] {
        if (flags == RENAME_EXCHANGE && lingering.count() > 0)
            ::usleep(static_cast<useconds_t>(lingering.count()));
    };
    linger();
    const long result = ::syscall(SYS_renameat2, folder, from, otherFolder, to, flags);
    linger();
    return static_cast<int>(result);
}

namespace quorvell {
namespace {

using test::bodyOf;
using test::idOf;
using test::WriteLedger;
using test::writeText;
namespace fs = std::filesystem;

/// Of a moment of its own, so that lists have one order only.
Note noteAt(int number, int version)
{
    Note note = noteOf(idOf(number), "Note", bodyOf(number, version));
    note.created = note.updated = monday + std::chrono::seconds(number);
    return note;
}

FullNotebook::Change bodyChange(int note, int version)
{
    return [body = bodyOf(note, version)](Note& changed) { changed.body = body; };
}

/// What the writing program says once a version is durable. Small enough to be written to a pipe in one piece.
struct Confirmed {
    int note;
    int version;
};

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
    const std::function<void(int)> writeNext = [&](int number) {
        const auto note = store.note(idOf(number));
        const int version = note ? test::versionOf(number, *note).value_or(0) + 1 : 1;
        const auto confirm = [&, number, version](const NotebookVerdict& verdict) {
            const Confirmed confirmed{number, version};
            if (!verdict.isStored || ::write(pipe, &confirmed, sizeof(confirmed)) != sizeof(confirmed))
                _exit(2);
            writeNext(version % 5 == 0 ? nextNote++ : number);
        };
        if (note)
            store.update(idOf(number), bodyChange(number, version), confirm);
        else
            store.add(noteAt(number, version), confirm);
    };
    for (int strand = 0; strand < 3; ++strand)
        writeNext(nextNote++);
    posts.runUntil([] { return false; });
    _exit(3);
}

/// Lets the program write until it has confirmed `count` versions and for `time` more, then kills it.
void writeAndKill(const std::string& folder, int count, std::chrono::microseconds time, WriteLedger& ledger)
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
        ledger.asked(next.note, next.version + 1); // begun at once
        ledger.confirmed(next.note, next.version);
        if (--count == 0)
            kill();
    }
    ::close(ends[0]);
    int status = 0;
    ASSERT_EQ(::waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer gave up by itself: " << WEXITSTATUS(status);
}

std::size_t countNoteFiles(const std::string& folder)
{
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(folder))
        count += isNoteFileName(entry.path().filename().string()) ? 1 : 0;
    return count;
}

TEST(NotebookTrouble, aThousandWritesAndKills)
{
    const test::TemporaryFolder folder(test::memoryDisk());
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> count(0, 60);
    std::uniform_int_distribution<int> microseconds(0, 4'000);
    WriteLedger ledger;
    while (ledger.confirmedWrites() < 1000) {
        const std::chrono::microseconds time(microseconds(random));
        ASSERT_NO_FATAL_FAILURE(writeAndKill(folder.path(), count(random), time, ledger));
        const auto content = readNoteFolder(folder.path(), Instant{});
        ASSERT_TRUE(content);
        ASSERT_EQ(countNoteFiles(folder.path()), content->notes.size()) << "one file a note, and every file is one";
        for (const Note& note : content->notes)
            ASSERT_TRUE(test::versionOf(std::stoi(note.id.substr(4)), note)) << note.id;
    }
    ledger.judge("killed at random points", readNoteFolder(folder.path(), Instant{})->notes);
}

/// Something that happens to the file of a note, or to all of them, while the note is being written.
struct Trouble {
    const char* name;
    std::function<void(const std::string& path, const FileStamp& before, int write)> happens;
    std::function<void()> ends = [] {};
};

/// Two hundred writes of twenty notes; each meets the trouble at some moment.
void writeThrough(Desk& desk, const Trouble& trouble)
{
    constexpr int writes = 200;
    constexpr int notes = 20;
    NotebookStore& store = desk.open();
    WriteLedger ledger;
    std::mt19937 random(7);
    for (int write = 0; write < writes; ++write) {
        const int number = static_cast<int>(random() % notes);
        const int version = ledger.nextVersion(number);
        const std::string path = store.fileURL(idOf(number)).value_or("");
        const FileStamp before = FileStamp::ofFile(path).value_or(FileStamp{});
        NotebookVerdict verdict;
        {
            const std::jthread meddler([&, delay = std::chrono::microseconds(random() % 1500)] {
                std::this_thread::sleep_for(delay);
                trouble.happens(path, before, write);
            });
            verdict = store.note(idOf(number)) ? desk.update(idOf(number), bodyChange(number, version))
                                               : desk.add(noteAt(number, version));
        }
        if (verdict.isStored)
            ledger.confirmed(number, version);
        else
            ledger.refused(verdict.problem);
        if (write % 3 == 0)
            desk.reload();
    }
    trouble.ends();
    desk.reload();
    ledger.judge(trouble.name, store.notes(), [&desk](const std::string& id) { return desk.history(id); });
    EXPECT_TRUE(desk.stored() == store.notes());
}

/// Takes the file away, unless it is the new one already.
void takeAway(const std::string& path, const FileStamp& before)
{
    const std::string aside = path + ".aside";
    if (::rename(path.c_str(), aside.c_str()) == 0 && FileStamp::ofFile(aside) != before)
        ::renameat2(AT_FDCWD, aside.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE);
}

/// As an editor does that saves atomically what it has read a moment ago.
void saveFromOutside(const std::string& path, int version)
{
    auto note = NoteFile::decode(test::readText(path), monday);
    if (!note)
        return;
    note->body = bodyOf(std::atoi(note->id.c_str() + 4), version);
    note->updated += 1ms;
    writeText(path + ".tmp", NoteFile::encode(*note));
    ::rename((path + ".tmp").c_str(), path.c_str());
}

/// Gives one note another title again and again, until it is killed. Says on the pipe when it has begun.
[[noreturn]] void retitleForEver(const std::string& folder, int pipe)
{
    lingering = std::chrono::microseconds(400);
    test::PostQueue posts;
    FileWorker worker(posts.poster());
    VirtualScheduler clock;
    auto opened = NotebookStore::open(folder, worker, clock);
    int titles = 0;
    const std::function<void(const NotebookVerdict&)> next = [&](const NotebookVerdict&) {
        if (++titles == 2 && ::write(pipe, "x", 1) != 1)
            _exit(1);
        opened.store->update(idOf(1), titled(std::to_string(titles)), next);
    };
    next({});
    posts.runUntil([] { return false; });
    _exit(2);
}

/// Starts a program that writes a note, saves that note from outside and kills the program a moment later.
void saveAndKill(const std::string& folder, const std::string& path, int version, std::mt19937& random)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0)
        retitleForEver(folder, ends[1]);
    ::close(ends[1]);
    char begun = 0;
    EXPECT_EQ(::read(ends[0], &begun, 1), 1);
    ::close(ends[0]);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 2000));
    saveFromOutside(path, version);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 1000));
    ::kill(writer, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer gave up by itself: " << WEXITSTATUS(status);
}

TEST(NotebookTrouble, killedWhileAnotherProgramSaves)
{
    constexpr int kills = 200;
    const test::TemporaryFolder folder(test::memoryDisk());
    const std::string path = folder / "a.md";
    writeText(path, NoteFile::encode(noteAt(1, 1)));
    std::mt19937 random(20261122);
    WriteLedger ledger;
    int rescued = 0;
    for (int version = 2; version < kills + 2; ++version) {
        ASSERT_NO_FATAL_FAILURE(saveAndKill(folder.path(), path, version, random));
        tidyNotebook(folder.path(), monday); // As the next program does when it opens the notebook.
        ledger.asked(1, version);
        ledger.confirmed(1, version);
        const auto content = readNoteFolder(folder.path(), Instant{});
        ASSERT_TRUE(content && content->notes.size() == 1);
        const auto versions = NoteHistory(folder.path()).versions(idOf(1));
        const bool isInHistory = std::any_of(versions.begin(), versions.end(),
            [version](const NoteVersion& known) { return known.body == bodyOf(1, version); });
        const bool isThere = content->notes.front().body == bodyOf(1, version);
        ASSERT_TRUE(isThere || isInHistory) << "lost: version " << version;
        rescued += isThere ? 0 : 1;
    }
    ledger.judge("killed while another program saves", readNoteFolder(folder.path(), Instant{})->notes,
        [&folder](const std::string& id) { return NoteHistory(folder.path()).versions(id); });
    RecordProperty("rescued", rescued);
}

TEST(NotebookTrouble, otherProgramsInTheFolder)
{
    constexpr int fromOutside = 100'000;
    const Trouble troubles[] = {
        {"the file vanishes", [](const std::string& path, const FileStamp& before, int) { takeAway(path, before); }},
        {"an editor saves atomically",
            [](const std::string& path, const auto&, int write) { saveFromOutside(path, fromOutside + write); }},
        {"a sync program renames the file",
            [](const std::string& path, const auto&, int write) {
                const std::string renamed = fs::path(path).parent_path() / ("renamed-" + std::to_string(write) + ".md");
                ::rename(path.c_str(), renamed.c_str());
            }},
    };
    for (const Trouble& trouble : troubles) {
        Desk desk;
        writeThrough(desk, trouble);
    }
}

TEST(NotebookTrouble, aFolderThatTurnsReadOnly)
{
    Desk desk;
    const test::OrdinaryUser user(desk.folder.path().c_str());
    ASSERT_TRUE(user.isOrdinary());
    const auto allow = [&desk](mode_t mode) { ::chmod(desk.folder.path().c_str(), mode); };
    writeThrough(desk,
        {"the folder turns read-only and back",
            [&](const auto&, const auto&, int write) { allow(write % 8 < 4 ? 0700 : 0500); }, [&] { allow(0700); }});
}

/// A disk of 200 kB for this process alone. False where the system does not allow that.
bool mountSmallDisk(const std::string& folder)
{
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    writeText("/proc/self/setgroups", "deny");
    writeText("/proc/self/uid_map", "0 " + user + " 1");
    writeText("/proc/self/gid_map", "0 " + group + " 1");
    return ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=200k,mode=0700") == 0;
}

/// In a process of its own, which the small disk goes with.
[[noreturn]] void fillTheDisk(const std::string& folder)
{
    // First of all, because a process with threads cannot have a disk of its own.
    const bool isSmall = mountSmallDisk(folder);
    ::setenv("TMPDIR", folder.c_str(), 1);
    Desk desk;
    if (isSmall) {
        writeThrough(desk, {"the disk is full", [](const auto&, const auto&, int) {}});
    } else {
        const test::FileSizeLimit limit(3000);
        writeThrough(desk, {"the disk is full (as a limit for files)", [](const auto&, const auto&, int) {}});
    }
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST(NotebookTrouble, aDiskThatFills)
{
    const test::TemporaryFolder folder;
    const pid_t process = ::fork();
    if (process == 0)
        fillTheDisk(folder.path());
    int status = 0;
    ASSERT_EQ(::waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

TEST(NotebookTrouble, aThousandFilesChangeWhileNotesAreWritten)
{
    constexpr int count = 1000;
    Desk desk;
    const auto writeOutside = [&desk](int number, int version) {
        Note note = noteAt(number, version);
        note.updated = monday + std::chrono::hours(24 * version);
        writeText(desk.folder / (idOf(number) + ".md"), NoteFile::encode(note));
    };
    for (int number = 0; number < count; ++number)
        writeOutside(number, 1);
    NotebookStore& store = desk.open();
    WriteLedger ledger;
    std::jthread others([&] {
        for (int number = 0; number < count; ++number)
            writeOutside(number, 2);
    });
    for (int number = count; number < count + 20; ++number) {
        ledger.asked(number, 1);
        ASSERT_TRUE(desk.add(noteAt(number, 1)).isStored);
        ledger.confirmed(number, 1);
        store.folderChanged();
    }
    others.join();
    for (int number = 0; number < count; ++number) {
        ledger.asked(number, 2);
        ledger.confirmed(number, 2);
    }
    desk.reload();
    ledger.judge("1,000 files change at once", store.notes());
    EXPECT_TRUE(desk.stored() == store.notes());
}

} // namespace
} // namespace quorvell
