// SPDX-License-Identifier: MIT
// A place in a list, as people point at one of several things: "the second one", "number two", "the last".
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvell {

struct ListPlace {
    static constexpr int last = -1;

    int index = 0; ///< From 0 on, or `last`.

    /// Nothing when the words say anything else.
    static std::optional<ListPlace> read(std::string_view words);
    /// Where it is among so many things; nothing when there are not as many.
    std::optional<std::size_t> among(std::size_t count) const;

    bool operator==(const ListPlace&) const = default;
};

} // namespace quorvell
