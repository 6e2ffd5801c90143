// SPDX-License-Identifier: MIT
// What is said of a list without naming it.
#pragma once

#include "Understanding/dialogue/memory/ListTalk.h"
#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ListFollowUp {
    /// What can only be about the list that is being talked of: "add butter", "how many are there", "delete it".
    /// Only items that were told or changed are ticked or taken off without their list.
    static std::optional<ListIntent> read(std::string_view core, const ListTalk& talk);
    /// Bare words right behind a list that was made: "tea and biscuits". Alone they are things of it only where they
    /// can hardly be anything else; `isSure` is whether that is so.
    struct Dictated {
        ListIntent intent;
        bool isSure = false;
    };
    static std::optional<Dictated> readDictated(std::string_view core, const ListTalk& talk);
};

} // namespace quorvell
