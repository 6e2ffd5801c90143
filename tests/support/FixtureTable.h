// SPDX-License-Identifier: MIT
// Tables of tests/fixtures whose rows are long texts: what is asked, and what is answered; or what happens one thing
// after the other.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace quorvell::test {

struct FixtureRow {
    std::string name; ///< What is special about it; most rows speak for themselves.
    std::vector<std::string> lines;
};

/// The rows of tests/fixtures/<path>, each of `lines` lines where that is given. Empty lines part the rows, "# " begins
/// a name.
inline std::vector<FixtureRow> fixtureRows(const std::string& path, std::size_t lines = 0)
{
    std::vector<FixtureRow> rows(1);
    std::ifstream file(QUORVELL_FIXTURES "/" + path);
    for (std::string line; std::getline(file, line);) {
        if (line.empty())
            rows.emplace_back();
        else if (line.starts_with("# "))
            rows.back().name = line.substr(2);
        else
            rows.back().lines.push_back(line);
    }
    for (FixtureRow& row : rows) {
        EXPECT_TRUE(lines == 0 ? !row.lines.empty() : row.lines.size() == lines) << path << ": " << row.name;
        row.lines.resize(std::max(lines, row.lines.size()));
    }
    return rows;
}

/// Plays each row from a new beginning: `begin` gives what plays one line and returns what came of it, which stands
/// below the line, "> " before each.
template <typename Begin> void playFixture(const std::string& path, const Begin& begin)
{
    for (const auto& [name, lines] : fixtureRows(path)) {
        SCOPED_TRACE(name);
        auto play = begin();
        std::string played;
        std::string written;
        for (const std::string& line : lines) {
            written += line + "\n";
            if (line.starts_with("> "))
                continue;
            played += line + "\n";
            const std::vector<std::string> answers = play(line);
            for (const std::string& answer : answers)
                played += "> " + answer + "\n";
        }
        EXPECT_EQ(played, written);
    }
}

/// "rest of the line" behind its first word.
inline std::pair<std::string, std::string> verbAndRest(const std::string& line)
{
    const std::size_t end = std::min(line.find(' '), line.size());
    return {line.substr(0, end), line.substr(std::min(end + 1, line.size()))};
}

} // namespace quorvell::test
