// SPDX-License-Identifier: MIT
// Whether a word stands in a short table.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace quorvell {

template <std::size_t size>
constexpr bool isOneOf(const std::array<std::string_view, size>& table, std::string_view word)
{
    return std::find(table.begin(), table.end(), word) != table.end();
}

} // namespace quorvell
