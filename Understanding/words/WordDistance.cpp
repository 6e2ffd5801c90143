// SPDX-License-Identifier: MIT
#include "Understanding/words/WordDistance.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr std::size_t farApart = 9;

} // namespace

std::size_t WordDistance::between(std::string_view left, std::string_view right)
{
    if (left == right)
        return 0;
    if (left.size() > longest || right.size() > longest)
        return farApart;
    using Row = std::array<std::size_t, longest + 1>;
    Row beforeLast{};
    Row last{};
    Row row{};
    for (std::size_t column = 0; column <= right.size(); ++column)
        last[column] = column;
    for (std::size_t line = 1; line <= left.size(); ++line) {
        row[0] = line;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const std::size_t change = left[line - 1] == right[column - 1] ? 0 : 1;
            row[column] = std::min({last[column] + 1, row[column - 1] + 1, last[column - 1] + change});
            const bool isSwapped =
                line > 1 && column > 1 && left[line - 1] == right[column - 2] && left[line - 2] == right[column - 1];
            if (isSwapped)
                row[column] = std::min(row[column], beforeLast[column - 2] + 1);
        }
        beforeLast = last;
        last = row;
    }
    return std::min(last[right.size()], farApart);
}

bool WordDistance::areAlike(std::string_view left, std::string_view right)
{
    constexpr std::size_t shortWord = 4;
    const std::size_t most = std::max(left.size(), right.size()) <= shortWord ? 1 : 2;
    return !left.empty() && !right.empty() && left.front() == right.front() && between(left, right) <= most;
}

} // namespace quorvell
