// SPDX-License-Identifier: MIT
// What is asked of a list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ListIntent {
    enum class Kind : std::uint8_t {
        showAll, ///< Which lists there are.
        showEach, ///< The same with what is on them.
        find, ///< On which lists the items are.
        show,
        count,
        exists, ///< Whether there is such a list.
        has, ///< Whether the items are on it.
        create,
        add,
        tick,
        untick,
        remove,
        replace, ///< The first item by the second.
        clear,
        clearTicked,
        keepOnly, ///< All but the items go.
        move, ///< The items from `list` to the list `title`.
        edit, ///< It is not said what is to be changed.
        rename, ///< To `title`.
        deleteList,
        deleteAll, ///< All lists.
        clearAll, ///< What is on all lists.
        sort, ///< Cannot be: things stay in the order in which they came.
    };

    /// Of a new list: what was said of one that may be there already.
    enum class Beside : std::uint8_t { none, anew, another };

    Kind kind = Kind::show;
    std::string list{}; ///< Its name; empty for "my list", "the list".
    std::vector<std::string> items{}; ///< As the tool takes them; empty where they have to be asked for.
    std::vector<std::string> added{}; ///< What goes on it in the same breath as the items are taken off.
    std::string title{};
    Beside beside = Beside::none;
    bool isFirst = false; ///< Wished to the top of the list.
    bool isOfSeveral = false; ///< More than one list was named.
    bool isOnlyTold = false; ///< Nobody wished for it: it is asked first.
    bool isOfLast = false; ///< "That one": the items of the last change are meant.

    bool operator==(const ListIntent&) const = default;

    /// "Milk and eggs" with what is to be done with them; "everything" and "what is ticked" make another request of it.
    static ListIntent ofItems(Kind kind, std::string list, const std::string& items);
    static constexpr std::size_t longestRead = 600; ///< Bytes: nobody says more of a list at once.
};

} // namespace quorvell
