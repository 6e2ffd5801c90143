// SPDX-License-Identifier: MIT
// One word that was heard or typed wrong: "I said Rosa, not Rose".
#pragma once

#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct WordRepair {
    std::string right{}; ///< As it was said.
    std::string wrong{}; ///< Empty where nobody said which: "I said Rosa".

    /// Nothing for words that put nothing right. Times are put right too: who knows better about them looks first.
    static std::optional<WordRepair> read(std::string_view core);

    /// With the right words in place of the wrong ones; nothing where those are not in it. Where nobody said which are
    /// wrong it is the only word that looks like the right one.
    std::optional<std::string> in(const std::string& text) const;
    /// The same in every text of a tool's arguments, save those that are ids.
    std::optional<std::string> inArguments(const std::string& arguments) const;

    bool operator==(const WordRepair&) const = default;
};

} // namespace quorvell
