// SPDX-License-Identifier: MIT
// What is to stand on a list, out of one breath: "milk, eggs and two loaves of bread".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ItemWords {
    /// Each thing once, without "the" and "some" before it. A comma separates, and so does "and", unless what it joins
    /// is one thing ("salt and pepper", "an hour and a half") or one duty ("wash and iron the shirts", "call Ana and
    /// Bob"). Where nobody says commas, groceries that everybody buys are told apart too.
    static std::vector<std::string> split(std::string_view words);
    /// One thing as it is to stand there: "a cap" as "cap"; what is more than one thing stays as it was said.
    static std::string one(std::string_view words);
    /// One thing that is there already, as the tool takes it: "#4" for "item 4", "#last" for "the last one"; else its
    /// words.
    static std::string named(std::string_view words);
    /// The same of several.
    static std::vector<std::string> namedAll(std::string_view words);
    /// "That one", "the item", "it": nothing that could be looked for.
    static bool isPointing(std::string_view words);
    /// Of those, what was spoken of: "that one", "it".
    static bool isDefinite(std::string_view words);
    /// Nothing but what everybody buys, and how much of it.
    static bool isGroceries(std::string_view words);
    static bool isEverything(std::string_view words);
    /// "What is ticked", "the done ones".
    static bool isTicked(std::string_view words);
};

} // namespace quorvell
