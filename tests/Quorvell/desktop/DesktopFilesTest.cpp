// SPDX-License-Identifier: MIT
// Catches files that cannot be taken back from the waste basket, and pictures without a bound.
#include "Quorvell/desktop/DesktopTrash.h"
#include "Quorvell/desktop/PictureFormats.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvell {
namespace {

/// A program of its own, because the library asks for the user's folders only once.
[[noreturn]] void putIntoATrashOfItsOwn(const std::string& home)
{
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (home + "/data").c_str(), 1);
    const std::string file = home + "/a name with spaces.md";
    test::writeText(file, "note");
    const bool isPut = DesktopTrash().put(file);
    const bool isThere = test::readText(home + "/data/Trash/files/a name with spaces.md") == "note";
    const std::string information = test::readText(home + "/data/Trash/info/a name with spaces.md.trashinfo");
    const bool isDescribed = information.find("a%20name%20with%20spaces.md") != std::string::npos;
    const bool isSecondRefused = !DesktopTrash().put(file);
    std::exit(isPut && isThere && isDescribed && isSecondRefused ? 0 : 1);
}

TEST(DesktopTrash, takesAFileThatFileManagersCanGiveBack)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const test::TemporaryFolder home;
    EXPECT_EXIT(putIntoATrashOfItsOwn(home.path()), testing::ExitedWithCode(0), "");
}

/// A bitmap of one colour.
std::string bitmap(int width, int height)
{
    const int rowBytes = (3 * width + 3) / 4 * 4;
    std::string bytes("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0", 18);
    const auto append = [&bytes](int value, int count) {
        for (int index = 0; index < count; ++index)
            bytes += static_cast<char>(value >> (8 * index));
    };
    append(width, 4);
    append(height, 4);
    append(1, 2);
    append(24, 2);
    bytes.append(24, '\0');
    return bytes.append(static_cast<std::size_t>(rowBytes * height), '\x7f');
}

int numberAt(const std::string& png, std::size_t position)
{
    int number = 0;
    for (std::size_t index = 0; index < 4; ++index)
        number = 256 * number + static_cast<unsigned char>(png[position + index]);
    return number;
}

TEST(PictureFormats, becomePngOfBoundedSize)
{
    const PictureFormats formats;
    const std::string png = formats.png(bitmap(30, 20)).value_or("");
    ASSERT_GT(png.size(), 60u);
    std::string bomb = bitmap(30, 20);
    bomb.replace(18, 8, std::string("\x30\x75\x00\x00\x30\x75\x00\x00", 8)); // says it has 30,000 pixels a side
    const struct Row {
        const char* name;
        std::string bytes;
        int width; ///< 0 where it is refused.
        int height;
    } rows[] = {{"BMP", bitmap(30, 20), 30, 20}, {"PNG", png, 30, 20}, {"PPM", "P3 2 1 255 255 0 0 0 255 0", 2, 1},
        {"too wide", bitmap(5000, 10), 4096, 8}, {"no picture", "<html>", 0, 0}, {"nothing", "", 0, 0},
        {"says it is huge", bomb, 0, 0}, {"half of one", png.substr(0, 40), 0, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto made = formats.png(row.bytes);
        ASSERT_EQ(made.has_value(), row.width > 0);
        EXPECT_TRUE(!made || made->starts_with("\x89PNG"));
        EXPECT_EQ(made ? numberAt(*made, 16) : 0, row.width);
        EXPECT_EQ(made ? numberAt(*made, 20) : 0, row.height);
    }
}

} // namespace
} // namespace quorvell
