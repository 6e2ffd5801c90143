// SPDX-License-Identifier: MIT
// Catches changes in a folder that go unnoticed.
#include "Quorvell/files/FolderWatch.h"

#include "PostQueue.h"
#include "Quorvell/files/AtomicFile.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace quorvell {

namespace fs = std::filesystem;
using test::writeText;

TEST(FolderWatch, tellsOfEveryKindOfChange)
{
    const test::TemporaryFolder parent;
    const std::string folder = parent / "watched";
    fs::create_directory(folder);
    writeText(folder + "/a.md", "a");
    test::PostQueue posts;
    int changes = 0;
    FolderWatch watch(folder, posts.poster(), [&changes] { ++changes; });
    const struct Row {
        const char* name;
        std::function<void()> happens;
        int isTold;
    } rows[] = {
        {"a hidden file", [&] { writeText(folder + "/.b.tmp", "b"); }, 0},
        {"written in place", [&] { writeText(folder + "/a.md", "b"); }, 1},
        {"saved atomically", [&] { EXPECT_EQ(writeFileDurably(folder, "a.md", "c"), FileProblem::none); }, 1},
        {"renamed", [&] { fs::rename(folder + "/a.md", folder + "/c.md"); }, 1},
        {"removed", [&] { fs::remove(folder + "/c.md"); }, 1},
        {"the folder goes", [&] { fs::rename(folder, parent / "aside"); }, 1},
        {"something else beside it", [&] { writeText(parent / ".other", ""); }, 0},
        {"the folder comes back", [&] { fs::rename(parent / "aside", folder); }, 1},
        {"written in it again", [&] { writeText(folder + "/d.md", "d"); }, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        changes = 0;
        row.happens();
        EXPECT_TRUE(posts.runUntil([&] { return changes >= row.isTold; }));
        // What comes late must not count for the next row.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        posts.runPosted();
        EXPECT_EQ(std::min(changes, 1), row.isTold);
    }
}

} // namespace quorvell
