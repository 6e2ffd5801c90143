// SPDX-License-Identifier: MIT
// What a conversation keeps in mind of the user's lists.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvell {

struct ListTalk {
    static constexpr std::size_t mostItems = 200; ///< That are kept in mind.
    static constexpr std::size_t mostNames = 20;

    /// What is wanted of a list that is being looked up.
    enum class Purpose : std::uint8_t {
        tell,
        count,
        exists,
        lack, ///< Whether what ran out is to be bought.
        done, ///< Whether what somebody says that they have done stands there.
        spared, ///< The same of what is not needed any more.
        where, ///< To which list something should go.
        edit, ///< It was not said what should be changed.
        newFor, ///< It is made for what was to be added to it.
        anew, ///< A new list, in place of one of that name if there is one.
        another, ///< A new list beside one of that name.
        deleteAll,
        clearAll,
    };

    FoundThing list{}; ///< "My list", spoken of last; without an id there is none.
    std::vector<std::string> items{}; ///< On it, as far as they were told or changed; in the order of telling.
    std::size_t told = 0; ///< How many of them were told: "read me the rest".
    std::vector<std::string> last{}; ///< Those of the last change: "that one".
    std::vector<std::string> names{}; ///< Of the lists that were spoken of, the newest last.
    std::size_t dictatedAt = 0; ///< Utterance that made a list or put something on it; bare words behind it go on.
    bool isNew = false; ///< The list was made then, or its first things are being told one after the other.
    std::vector<std::string> candidates{}; ///< That a question under way lets choose from.
    Purpose purpose = Purpose::tell;
    std::string otherwise{}; ///< What is said where the thing stands on no list: it was looked for elsewhere before.
    std::string moveTo{}; ///< The list to which what is being taken off goes; empty for none.
    std::string movedFrom{}; ///< The list on which it stood, behind "your", once it is off.
    std::string undo{}; ///< Token of the last change; empty for none.

    bool operator==(const ListTalk&) const = default;
};

} // namespace quorvell
