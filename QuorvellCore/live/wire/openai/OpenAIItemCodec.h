// SPDX-License-Identifier: MIT
// Writes and reads the entries of a conversation, as live sessions and the Responses service share them.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIItem.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace quorvell {

struct OpenAIItemCodec {
    static constexpr std::size_t maximumImages = 8; ///< In one message.

    struct Problem {
        std::string code; ///< "missing_field" or "invalid_value".
        std::string reason; ///< A sentence that names the field.
        bool operator==(const Problem&) const = default;
    };

    static Json encode(const OpenAIItem& item);
    static Json message(std::string_view role, std::string_view text, const std::vector<LiveImage>& images = {});
    static std::variant<OpenAIItem, Problem> decode(const Json& item);
};

} // namespace quorvell
