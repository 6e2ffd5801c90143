// SPDX-License-Identifier: MIT
// Catches lines glued together, waiting for nobody, and anything but an ordinary file written or replaced.
#include "Quorvell/settings/PrivateFile.h"

#include "FileSizeLimit.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvell {
namespace {

TEST(PrivateFile, addsWholeLines)
{
    const test::TemporaryFolder folder;
    const std::string path = folder / "lines";
    EXPECT_EQ(PrivateFile::append(path, "one\n"), 4);
    {
        const test::FileSizeLimit limit(6);
        EXPECT_EQ(PrivateFile::append(path, "two\n"), std::nullopt) << "cut short";
    }
    EXPECT_EQ(PrivateFile::append(path, "three\n"), 13);
    EXPECT_EQ(test::readText(path), "one\ntw\nthree\n");
    EXPECT_EQ(PrivateFile::readEnd(path, 8), "three\n");
}

TEST(PrivateFile, touchesOrdinaryFilesOnly)
{
    const test::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    test::writeText(folder / "file", "old");
    ASSERT_EQ(::symlink("file", (folder / "link").c_str()), 0);
    ASSERT_EQ(::mkdir((folder / "folder").c_str(), 0700), 0);
    for (const char* name : {"pipe", "link", "folder"}) {
        EXPECT_EQ(PrivateFile::append(folder / name, "x\n"), std::nullopt) << name;
        EXPECT_FALSE(PrivateFile::replace(folder / name, "x")) << name;
        EXPECT_EQ(PrivateFile::readWhole(folder / name, 100) + PrivateFile::readEnd(folder / name, 100), "") << name;
    }
    EXPECT_EQ(test::readText(folder / "file"), "old");
    EXPECT_TRUE(PrivateFile::replace(folder / "file", "new"));
    EXPECT_EQ(test::readText(folder / "file"), "new");
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path()))
        ++files;
    EXPECT_EQ(files, 4U) << "nothing half written is left";
}

} // namespace
} // namespace quorvell
