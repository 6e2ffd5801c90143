// SPDX-License-Identifier: MIT
// What is to be done with the items of a list, in the words in which they were named, and what came of it.
#pragma once

#include "QuorvellCore/notebook/CheckList.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Items are named by words of theirs or by their place as a list is told, those that are open first: "#1", "#last",
/// "#all".
struct ListEdit {
    std::vector<std::string> add{}; ///< Texts of CheckList::itemText.
    std::vector<std::string> tick{};
    std::vector<std::string> untick{};
    std::vector<std::string> remove{};
    std::vector<std::string> keepOnly{}; ///< Everything else goes; nothing does where one of them is not found.
    std::string replace{}; ///< Gets the words `by`.
    std::string by{};
    bool clearTicked = false;
    bool clearAll = false;
    bool isByTexts = false; ///< Items are named by the whole of their texts, and nothing like them is meant.

    /// Words that may be one of several items, or that are a slip away from one.
    struct Unclear {
        std::string words;
        std::vector<std::string> candidates;

        bool operator==(const Unclear&) const = default;
    };

    /// Texts as they stand on the list.
    struct Outcome {
        std::vector<std::string> added{};
        std::vector<std::string> again{}; ///< Were to be added, stood there ticked, and are open again.
        std::vector<std::string> already{}; ///< Stood there, or were ticked or open, already.
        std::vector<std::string> ticked{};
        std::vector<std::string> unticked{};
        std::vector<CheckListItem> removed{};
        std::vector<std::string> replaced{}; ///< The old words and the new ones.
        std::vector<std::string> missing{}; ///< As they were named.
        std::vector<Unclear> unclear{}; ///< Where there are such, nothing was changed.
        bool isTooLong = false; ///< More items than a list may have; nothing was changed.

        bool changed() const;
        /// Whether everything that was named was there, and clear.
        bool isWhole() const { return missing.empty() && unclear.empty() && !isTooLong; }
        bool operator==(const Outcome&) const = default;
    };

    bool namesItems() const
    {
        return !(tick.empty() && untick.empty() && remove.empty() && keepOnly.empty() && replace.empty());
    }
    bool isEmpty() const { return add.empty() && !namesItems() && !clearTicked && !clearAll; }

    Outcome apply(CheckList& list) const;
    /// Of words that name an item: what they may be.
    static std::vector<std::size_t> named(const CheckList& list, std::string_view words);
    /// Items in the order in which a list is told.
    static std::vector<std::size_t> told(const CheckList& list);
    /// The same by the words of what it came to, for a list that somebody else changed in between: a place there may be
    /// another item's.
    static ListEdit again(const Outcome& outcome);
    /// Undoes just that, whatever else happened to the list since; false, and nothing done, where some of it is no
    /// longer as it was left.
    static bool takeBack(const Outcome& outcome, CheckList& list);
};

} // namespace quorvell
