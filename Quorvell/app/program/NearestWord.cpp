// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/NearestWord.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace quorvell {

namespace {

constexpr std::size_t longestWord = 64; ///< Bytes; nobody means a command by more.

/// How many letters to change, insert, leave out or exchange with their neighbour.
std::size_t distance(std::string_view one, std::string_view other)
{
    const std::size_t width = other.size() + 1;
    std::vector<std::size_t> table((one.size() + 1) * width);
    std::iota(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(width), std::size_t(0));
    for (std::size_t row = 1; row <= one.size(); ++row) {
        table[row * width] = row;
        for (std::size_t column = 1; column < width; ++column) {
            const std::size_t here = row * width + column;
            const std::size_t changed = one[row - 1] == other[column - 1] ? 0 : 1;
            table[here] = std::min({table[here - width] + 1, table[here - 1] + 1, table[here - width - 1] + changed});
            const bool areExchanged =
                row > 1 && column > 1 && one[row - 1] == other[column - 2] && one[row - 2] == other[column - 1];
            if (areExchanged)
                table[here] = std::min(table[here], table[here - 2 * width - 2] + 1);
        }
    }
    return table.back();
}

} // namespace

std::string nearestWord(std::string_view typed, const std::vector<std::string>& words)
{
    constexpr std::size_t shortWord = 4;
    if (typed.size() < 2 || typed.size() > longestWord)
        return {};
    std::string nearest;
    std::size_t least = typed.size() <= shortWord ? 1 : 2;
    for (const std::string& word : words) {
        const std::size_t away = word.starts_with(typed) ? 0 : distance(typed, word);
        if (away < least || (away == least && nearest.empty())) {
            least = away;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace quorvell
