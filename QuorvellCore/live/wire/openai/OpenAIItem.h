// SPDX-License-Identifier: MIT
// What a conversation with a backend model consists of, one value for each entry.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveImage.h"

#include <string>
#include <variant>
#include <vector>

namespace quorvell::openai_item {

struct Message {
    std::string role = "user"; ///< "user", "assistant", "system" or "developer".
    std::string text{}; ///< When read: the text parts, a line break between two.
    std::vector<LiveImage> images{};
    bool operator==(const Message&) const = default;
};
/// What the model asked for earlier.
struct FunctionCall {
    std::string callID;
    std::string name;
    std::string arguments; ///< JSON text.
    bool operator==(const FunctionCall&) const = default;
};
struct FunctionOutput {
    std::string callID;
    std::string output = "{}"; ///< JSON text of the tool's owner.
    bool operator==(const FunctionOutput&) const = default;
};

} // namespace quorvell::openai_item

namespace quorvell {

using OpenAIItem = std::variant<openai_item::Message, openai_item::FunctionCall, openai_item::FunctionOutput>;

} // namespace quorvell
