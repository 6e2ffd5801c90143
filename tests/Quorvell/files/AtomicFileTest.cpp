// SPDX-License-Identifier: MIT
// Catches files that are lost, half written or readable by others when writing stops.
#include "Quorvell/files/AtomicFile.h"

#include "FileSizeLimit.h"
#include "OrdinaryUser.h"
#include "Quorvell/files/Folder.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <cerrno>
#include <ctime>

namespace {
int flushes = 0;
}

/// Stands before the system's, which a test cannot watch.
extern "C" int fsync(int file)
{
    ++flushes;
    return ::fdatasync(file);
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

TEST(AtomicFile, saysWhyItCannotWrite)
{
    const test::TemporaryFolder folder;
    writeText(folder / "file", "");
    EXPECT_EQ(writeFileDurably(folder / "gone", "a.md", "new"), FileProblem::folderGone);
    EXPECT_EQ(writeFileDurably(folder / "file", "a.md", "new"), FileProblem::notAFolder);

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
