// SPDX-License-Identifier: MIT
// Catches files that are lost, half written or readable by others when writing stops.
#include "Quorvell/files/AtomicFile.h"

#include "FileSizeLimit.h"
#include "OrdinaryUser.h"
#include "Quorvell/files/FileTarget.h"
#include "Quorvell/files/Folder.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utime.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <functional>

namespace {
int flushes = 0;
/// What happens before each exchange of two files; another number than 0 is the error that it fails with.
std::function<int()> beforeExchange;
} // namespace

/// Stands before the system's, which a test cannot watch.
extern "C" int fsync(int file)
{
    ++flushes;
    return ::fdatasync(file);
}

extern "C" int renameat2(int folder, const char* from, int otherFolder, const char* to, unsigned flags) noexcept
{
    const int failure = flags == RENAME_EXCHANGE && beforeExchange ? beforeExchange() : 0;
    if (failure == 0)
        return static_cast<int>(::syscall(SYS_renameat2, folder, from, otherFolder, to, flags));
    errno = failure;
    return -1;
}

namespace quorvell {
namespace {

using Names = std::vector<std::string>;
using test::readText;
using test::writeText;

unsigned modeOf(const std::string& path)
{
    struct stat found { };
    return ::stat(path.c_str(), &found) == 0 ? found.st_mode & 07777u : 0;
}

TEST(AtomicFile, replacesAFileWholeOrNotAtAllAndKeepsItPrivate)
{
    const test::TemporaryFolder folder;
    writeText(folder / "a.md", "old");
    {
        const test::FileSizeLimit limit(5000);
        EXPECT_EQ(writeFileDurably(folder.path(), "a.md", std::string(20'000, 'x')), FileProblem::tooLarge);
    }
    EXPECT_EQ(readText(folder / "a.md"), "old");
    EXPECT_EQ(fileNamesIn(folder.path()), Names{"a.md"});
    ::chmod((folder / "a.md").c_str(), 0644);
    const std::string large(3'000'000, 'x');
    EXPECT_EQ(writeFileDurably(folder.path(), "a.md", large), FileProblem::none);
    EXPECT_EQ(readText(folder / "a.md"), large);
    EXPECT_EQ(modeOf(folder / "a.md"), 0600u);
    EXPECT_EQ(writeFileDurably(folder.path(), "a.md", ""), FileProblem::none);
    EXPECT_EQ(readText(folder / "a.md"), "");
    EXPECT_EQ(fileNamesIn(folder.path()), Names{"a.md"});
}

TEST(AtomicFile, keepsWhatIsThereAndTakesAnotherName)
{
    const test::TemporaryFolder folder;
    writeText(folder / "a.md", "old");
    ASSERT_EQ(::symlink("nowhere", (folder / "b.md").c_str()), 0);
    AtomicFile file(folder.path());
    ASSERT_EQ(file.write("new"), FileProblem::none);
    EXPECT_EQ(file.commit("a.md", AtomicFile::Existing::keep), FileProblem::nameTaken);
    EXPECT_EQ(file.commit("b.md", AtomicFile::Existing::keep), FileProblem::nameTaken);
    EXPECT_EQ(file.commit("c.md", AtomicFile::Existing::keep), FileProblem::none);
    EXPECT_EQ(readText(folder / "a.md"), "old");
    EXPECT_EQ(readText(folder / "c.md"), "new");
    EXPECT_EQ(fileNamesIn(folder.path()), (Names{"a.md", "b.md", "c.md"}));
}

TEST(AtomicFile, isOnTheDiskBeforeItIsConfirmed)
{
    const test::TemporaryFolder folder;
    flushes = 0;
    EXPECT_EQ(writeFileDurably(folder.path(), "a.md", "new"), FileProblem::none);
    EXPECT_EQ(flushes, 2) << "the text, then its name";
    EXPECT_EQ(writeFileDurably(folder.path(), "a.md", "newer", AtomicFile::Flushing::no), FileProblem::none);
    EXPECT_EQ(flushes, 2);
    EXPECT_EQ(removeFileDurably(folder.path(), "a.md"), FileProblem::none);
    EXPECT_EQ(flushes, 3);
    EXPECT_EQ(fileProblem(EDQUOT), FileProblem::diskFull);
}

TEST(AtomicFile, leavesNothingBehindUncommitted)
{
    const test::TemporaryFolder folder;
    {
        AtomicFile file(folder.path());
        ASSERT_EQ(file.write("new"), FileProblem::none);
        const auto names = fileNamesIn(folder.path());
        ASSERT_TRUE(names && names->size() == 1);
        EXPECT_TRUE(names->front().starts_with('.') && !names->front().ends_with(".md"));
    }
    EXPECT_EQ(fileNamesIn(folder.path()), Names{});
}

TEST(AtomicFile, takesAPlaceOnlyFromWhatIsExpectedThere)
{
    const test::TemporaryFolder folder;
    writeText(folder / "a.md", "seen");
    const auto seen = FileStamp::ofFile(folder / "a.md");
    ASSERT_TRUE(seen);
    const auto attempt = [&folder, &seen] {
        AtomicFile file(folder.path());
        EXPECT_EQ(file.write("ours"), FileProblem::none);
        return file.commitOver("a.md", *seen);
    };
    writeText(folder / "a.md", "somebody else's");
    EXPECT_EQ(attempt(), FileProblem::changedMeanwhile);
    EXPECT_EQ(readText(folder / "a.md"), "somebody else's");
    ASSERT_EQ(std::remove((folder / "a.md").c_str()), 0);
    EXPECT_EQ(attempt(), FileProblem::changedMeanwhile);
    EXPECT_EQ(fileNamesIn(folder.path()), Names{});
    AtomicFile first(folder.path());
    ASSERT_EQ(first.write("first"), FileProblem::none);
    ASSERT_EQ(first.commit("a.md", AtomicFile::Existing::keep), FileProblem::none);
    EXPECT_EQ(FileStamp::ofFile(folder / "a.md"), first.stamp());
    AtomicFile second(folder.path());
    ASSERT_EQ(second.write("second"), FileProblem::none);
    EXPECT_EQ(second.commitOver("a.md", first.stamp()), FileProblem::none);
    EXPECT_EQ(readText(folder / "a.md"), "second");
    EXPECT_EQ(fileNamesIn(folder.path()), Names{"a.md"});
}

/// The texts of all files, those without a proper name last.
std::string textsIn(const test::TemporaryFolder& folder)
{
    std::string named;
    std::string others;
    for (const std::string& name : fileNamesIn(folder.path()).value_or(Names{}))
        (name == "a.md" ? named : others) += readText(folder / name) + ";";
    return named + others;
}

TEST(AtomicFile, losesNothingThatIsWrittenInTheLastInstant)
{
    enum class Happens { nothing, saved, gone, broken };
    struct Row {
        const char* name;
        std::vector<Happens> before; ///< The first exchange, the second, the third.
        FileProblem problem;
        const char* texts;
    };
    const Row rows[] = {
        {"nothing", {}, FileProblem::none, "ours;"},
        {"saved before the exchange", {Happens::saved}, FileProblem::changedMeanwhile, "1;"},
        {"saved again before it is put back", {Happens::saved, Happens::saved}, FileProblem::changedMeanwhile, "2;1;"},
        {"ours removed before it is put back", {Happens::saved, Happens::gone}, FileProblem::changedMeanwhile, "1;"},
        {"cannot be put back", {Happens::saved, Happens::broken}, FileProblem::other, "ours;1;"},
        {"removed before the exchange", {Happens::gone}, FileProblem::changedMeanwhile, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const test::TemporaryFolder folder;
        writeText(folder / "a.md", "seen");
        const auto seen = FileStamp::ofFile(folder / "a.md");
        ASSERT_TRUE(seen);
        std::size_t exchanges = 0;
        beforeExchange = [&] {
            switch (exchanges < row.before.size() ? row.before[exchanges] : Happens::nothing) {
            case Happens::saved:
                writeText(folder / "saved", std::to_string(exchanges + 1));
                std::rename((folder / "saved").c_str(), (folder / "a.md").c_str());
                break;
            case Happens::gone:
                std::remove((folder / "a.md").c_str());
                break;
            case Happens::broken:
                return EIO;
            case Happens::nothing:
                break;
            }
            ++exchanges;
            return 0;
        };
        {
            AtomicFile file(folder.path());
            ASSERT_EQ(file.write("ours"), FileProblem::none);
            EXPECT_EQ(file.commitOver("a.md", *seen), row.problem);
        }
        beforeExchange = nullptr;
        EXPECT_EQ(textsIn(folder), row.texts);
    }
}

TEST(AtomicFile, replacesOnlyOrdinaryFiles)
{
    const test::TemporaryFolder folder;
    writeText(folder / "file", "old");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkdir((folder / "folder").c_str(), 0700), 0);
    ASSERT_EQ(::symlink("file", (folder / "link").c_str()), 0);
    ASSERT_EQ(::symlink("pipe", (folder / "link to a pipe").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", (folder / "link to nothing").c_str()), 0);
    for (const char* name : {"pipe", "folder"}) {
        EXPECT_EQ(writeFileDurably(folder.path(), name, "new"), FileProblem::notAFile) << name;
        EXPECT_NE(modeOf(folder / name), 0u) << name;
    }
    struct Row {
        std::string path;
        const char* name; ///< In the folder; empty when it is refused.
        const char* says;
    };
    const Row rows[] = {
        {folder / "file", "file", ""},
        {folder / "new", "new", ""},
        {folder / "link", "file", ""},
        {folder / "link to a pipe", "", "is a device or a pipe"},
        {folder / "link to nothing", "", "leads to no file"},
        {folder / "pipe", "", "is a device or a pipe"},
        {folder / "folder", "", "is a folder"},
        {folder / "new/", "", "is a folder"},
        {folder / "folder/..", "", "is a folder"},
        {"", "", "No file is named"},
    };
    for (const Row& row : rows) {
        const FileTarget target = FileTarget::of(row.path);
        EXPECT_EQ(target.name, row.name) << row.path;
        EXPECT_EQ(target.folder, target.name.empty() ? "" : folder.path()) << row.path;
        EXPECT_NE(target.problem.find(row.says), std::string::npos) << target.problem;
        EXPECT_EQ(target.problem.empty(), !target.name.empty()) << target.problem;
    }
}

TEST(AtomicFile, saysWhyItCannotWrite)
{
    const test::TemporaryFolder folder;
    writeText(folder / "file", "");
    EXPECT_EQ(writeFileDurably(folder / "gone", "a.md", "new"), FileProblem::folderGone);
    EXPECT_EQ(writeFileDurably(folder / "file", "a.md", "new"), FileProblem::notAFolder);
    EXPECT_EQ(writeFileDurably(folder.path(), std::string(300, 'a'), "new"), FileProblem::nameTooLong);

    const test::OrdinaryUser user(folder.path().c_str());
    ASSERT_TRUE(user.isOrdinary());
    const std::string closed = folder / "closed";
    ASSERT_EQ(makeFolder(closed), FileProblem::none);
    writeText(closed + "/a.md", "old");
    ASSERT_EQ(::chmod(closed.c_str(), 0500), 0);
    EXPECT_EQ(writeFileDurably(closed, "a.md", "new"), FileProblem::noPermission);
    ::chmod(closed.c_str(), 0700);
    EXPECT_EQ(readText(closed + "/a.md"), "old");
}

TEST(AtomicFile, clearsAwayOnlyItsOwnOldRemains)
{
    const test::TemporaryFolder folder;
    const Names kept{".quorvell-0123456789abcdef.md", ".quorvell-0123456789abcdeF.tmp", ".quorvell-notes.tmp", "a.tmp"};
    const std::string old = ".quorvell-0123456789abcdef.tmp";
    const std::string young = ".quorvell-fedcba9876543210.tmp";
    for (const Names& names : {kept, Names{old, young}})
        for (const std::string& name : names) {
            writeText(folder / name, "");
            const utimbuf times{std::time(nullptr) - 7200, std::time(nullptr) - (name == young ? 1800 : 7200)};
            ASSERT_EQ(::utime((folder / name).c_str(), &times), 0);
        }
    removeStaleTemporaryFiles(folder.path(), std::chrono::hours(1));
    Names left = kept;
    left.push_back(young);
    std::sort(left.begin(), left.end());
    EXPECT_EQ(fileNamesIn(folder.path()), left);
}

TEST(Folder, isMadeWithTheFoldersAboveIt)
{
    const test::TemporaryFolder folder;
    const mode_t before = ::umask(0);
    EXPECT_EQ(makeFolder(folder / "a/b//c/"), FileProblem::none);
    ::umask(before);
    for (const char* made : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(modeOf(folder / made), 0700u) << made;
    ::chmod((folder / "a").c_str(), 0755);
    EXPECT_EQ(makeFolder(folder / "a"), FileProblem::none);
    EXPECT_EQ(modeOf(folder / "a"), 0755u);
    writeText(folder / "file", "");
    EXPECT_EQ(makeFolder(folder / "file"), FileProblem::notAFolder);
    EXPECT_EQ(makeFolder(folder / "file/below"), FileProblem::notAFolder);
    EXPECT_EQ(makeFolder(""), FileProblem::folderGone);

    // A home that is none
    EXPECT_EQ(makeFolder("/proc/none/notes"), FileProblem::cannotBeMade);
    EXPECT_NE(
        problemSentence(FileProblem::cannotBeMade, "/proc/none/notes").find("made: /proc takes no folders. Check"),
        std::string::npos);
    const test::OrdinaryUser user(folder.path().c_str());
    ASSERT_TRUE(user.isOrdinary());
    const std::string closed = folder / "closed";
    ASSERT_EQ(makeFolder(closed), FileProblem::none);
    ::chmod(closed.c_str(), 0500);
    EXPECT_EQ(makeFolder(closed + "/home/notes"), FileProblem::noPermission);
    const std::string sentence = problemSentence(FileProblem::noPermission, closed + "/home/notes");
    EXPECT_NE(sentence.find("/home/notes cannot be made: this account may not write in " + closed + ". Check"),
        std::string::npos)
        << sentence;
}

TEST(Folder, readsOrdinaryFilesOfLimitedSize)
{
    const test::TemporaryFolder folder;
    writeText(folder / "ten", "0123456789");
    writeText(folder / "empty", "");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(readFile(folder / "ten", 10), "0123456789");
    EXPECT_EQ(readFile(folder / "ten", 9), std::nullopt);
    EXPECT_EQ(readFile(folder / "empty", 0), "");
    for (const std::string& path : {folder / "pipe", folder / "none", folder.path(), std::string("/dev/zero")})
        EXPECT_EQ(readFile(path, 100), std::nullopt) << path;
    // Such a file says that it has no size.
    const auto status = readFile("/proc/self/status", 100'000);
    EXPECT_TRUE(status && status->size() > 500);
    EXPECT_EQ(readFile("/proc/self/status", 100), std::nullopt);
    EXPECT_EQ(fileNamesIn(folder / "none"), std::nullopt);
}

} // namespace
} // namespace quorvell
