// SPDX-License-Identifier: MIT
// Catches two holders of one notebook, and refusals without a reason.
#include "Quorvell/handover/NotebookLock.h"

#include "OrdinaryUser.h"
#include "Quorvell/files/Folder.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvell {

using Outcome = NotebookLock::Outcome;

TEST(NotebookLock, isHeldByOne)
{
    const test::TemporaryFolder folder;
    {
        const auto first = NotebookLock::take(folder / "a/b");
        EXPECT_EQ(first.outcome, Outcome::taken);
        const auto second = NotebookLock::take(folder / "a/b");
        EXPECT_EQ(second.outcome, Outcome::heldElsewhere);
        EXPECT_NE(second.problem.find("process " + std::to_string(::getpid())), std::string::npos) << second.problem;
        EXPECT_EQ(NotebookLock::take(folder / "c").outcome, Outcome::taken);
        struct stat found { };
        ASSERT_EQ(::stat((folder / "a/b/.quorvell.lock").c_str(), &found), 0);
        EXPECT_EQ(found.st_mode & 07777u, 0600u);
        // The file is anybody's to write into; what it says is only shown when it is a number.
        test::writeText(folder / "a/b/.quorvell.lock", "99 bottles");
        EXPECT_EQ(NotebookLock::take(folder / "a/b").problem.find("process"), std::string::npos);
    }
    EXPECT_EQ(NotebookLock::take(folder / "a/b").outcome, Outcome::taken);
}

TEST(NotebookLock, saysWhyItCannotBeHad)
{
    const test::TemporaryFolder folder;
    test::writeText(folder / "file", "");
    const test::OrdinaryUser user(folder.path().c_str());
    ASSERT_TRUE(user.isOrdinary());
    ASSERT_EQ(::mkdir((folder / "closed").c_str(), 0500), 0);
    ASSERT_EQ(::mkdir((folder / "linked").c_str(), 0700), 0);
    ASSERT_EQ(::symlink("/etc/passwd", (folder / "linked/.quorvell.lock").c_str()), 0);
    ASSERT_EQ(makeFolder(folder / "locked/.quorvell.lock"), FileProblem::none);
    ASSERT_EQ(makeFolder(folder / "piped"), FileProblem::none);
    ASSERT_EQ(::mkfifo((folder / "piped/.quorvell.lock").c_str(), 0600), 0);
    const std::pair<const char*, const char*> rows[] = {{"file", ""}, {"file/below", ""}, {"closed", ""},
        {"linked", "in the way"}, {"locked", "in the way"}, {"piped", "in the way"}};
    for (const auto& [name, says] : rows) {
        const std::string path = folder / name;
        const auto attempt = NotebookLock::take(path);
        EXPECT_EQ(attempt.outcome, Outcome::impossible) << path;
        EXPECT_NE(attempt.problem.find(path), std::string::npos) << attempt.problem;
        EXPECT_NE(attempt.problem.find(says), std::string::npos) << attempt.problem;
    }
}

} // namespace quorvell
