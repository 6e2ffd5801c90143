// SPDX-License-Identifier: MIT
// Looks up what a word of a request can have to do with time: by its row, else by what it sounds like.
#pragma once

#include "QuorvellCore/reminders/wording/WordTerms.h"

#include <string_view>

namespace quorvell {

struct RequestVocabulary {
    /// `word` is in lower case.
    static WordTerms termsOf(std::string_view word);
    /// Of one character that is no letter and no digit.
    static WordTerms termsOfMark(std::string_view mark);
};

} // namespace quorvell
