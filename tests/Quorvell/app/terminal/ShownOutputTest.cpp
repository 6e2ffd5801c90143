// SPDX-License-Identifier: MIT
// Catches outside text that acts on the terminal, and keys that reach one.
#include "Quorvell/app/terminal/ShownOutput.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quorvell {

TEST(ShownOutput, letsTextBeReadAndNothingElse)
{
    const Secrets secrets{{"sk-12345678"}};
    std::ostringstream out;
    std::streambuf* const before = out.rdbuf();
    {
        const ShownOutput shown(out, ShownOutput::Reader::person, secrets);
        out << "a\x1b[2J"
            << "b\u202E" << 7 << " sk-1234";
        out << "5678\r";
        ShownOutput::control(out, "\x1b[K");
        out << "first\nheld";
        out << std::flush;
        ShownOutput::faint(out, "\x1b[0mnote", TerminalColour::ansi);
        out << std::endl << "the end";
    }
    EXPECT_EQ(out.rdbuf(), before);
    EXPECT_EQ(out.str(), "a[2Jb7 (key)\x1b[Kfirst\nheld\x1b[2m[0mnote\x1b[0m\nthe end");
    out.str("");
    {
        const ShownOutput shown(out, ShownOutput::Reader::program, secrets);
        out << "\x1b sk-12345678" << std::endl;
    }
    EXPECT_EQ(out.str(), "\x1b (key)\n");
}

} // namespace quorvell
