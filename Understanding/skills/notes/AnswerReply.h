// SPDX-License-Identifier: MIT
// Words for what the notebook says to a question.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <string>
#include <string_view>

namespace quorvell {

struct AnswerReply {
    /// The sentences that hold it, said as what they are; empty where there are none.
    static std::string sentences(const Json& result);
    /// "You like coriander." of "Likes coriander."; other facts are told as they were kept.
    static std::string toThem(std::string_view fact);
    /// All that is kept about the user.
    static std::string facts(const Json& result);
};

} // namespace quorvell
