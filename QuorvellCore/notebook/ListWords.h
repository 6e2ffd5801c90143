// SPDX-License-Identifier: MIT
// How names of lists, and of what is on them, are compared as people say them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// From the loosest to the closest.
enum class ListLikeness : std::uint8_t {
    none,
    near, ///< A letter apart, as after a slip of the finger: to be asked about, never acted on where that loses
          ///< something.
    part, ///< All the words are in it: "bread" of "two loaves of bread".
    alike, ///< The same but for articles, plurals and what is called both ways: "groceries" and "grocery list".
    same,
};

/// The name of a thing, read once to be compared with many.
struct ListThing {
    std::string text{}; ///< As it stands.
    std::string plain{}; ///< Without case and signs.
    std::vector<std::string> words{}; ///< Those that matter, in the singular.

    ListThing() = default;
    explicit ListThing(std::string_view text);
};

struct ListWords {
    static constexpr std::size_t mostCompared = 40; ///< Words; nobody names a thing with more.

    /// What `wanted`, as it was said, has of an item that reads `held`.
    static ListLikeness ofItem(const ListThing& wanted, const ListThing& held);
    static ListLikeness ofItem(std::string_view wanted, std::string_view held)
    {
        return ofItem(ListThing(wanted), ListThing(held));
    }
    /// The same of a list's name; "my list" names none, and is like no title.
    static ListLikeness ofName(std::string_view wanted, std::string_view title);
    /// Whether the words name a list apart from others: not "my list".
    static bool isName(std::string_view words);
    /// Whether a title says that its note is a list: "Packing list", "To do", "Groceries checklist".
    static bool isListTitle(std::string_view title);
    /// As one speaks of it, behind "your": "shopping list", "Ana list".
    static std::string spoken(std::string_view title);
    /// Those that are most like what is wanted, all of the same likeness.
    struct Best {
        ListLikeness likeness = ListLikeness::none;
        std::vector<std::size_t> places{};
    };
    static Best bestItems(const ListThing& wanted, const std::vector<ListThing>& held);
    static Best bestNames(std::string_view wanted, const std::vector<std::string_view>& titles);
};

} // namespace quorvell
