// SPDX-License-Identifier: MIT
// Tables of tests/fixtures whose rows are long texts: what is asked, and what is answered.
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

} // namespace quorvell::test
