// SPDX-License-Identifier: MIT
// Yes and no in the dress in which people answer a question: "y", "delete it yes", "no, keep it".
#pragma once

#include "Understanding/time/LocalTime.h"

#include <string_view>

namespace quorvell {

struct AnswerWords {
    enum class Verdict { none, yes, no };

    /// As the answer to `question`, which can be answered by yes or no. What says more than that is neither.
    static Verdict verdict(std::string_view core, std::string_view question);
    /// Whether what was asked about is to be left alone, whatever the question: "no, leave it".
    static bool declines(std::string_view core);
    /// Words that do something to what was spoken of, "change it to 7", or ask something: no text to write down.
    static bool isNoText(std::string_view core);
    /// A time, and beside it nothing but "too", "not", "sorry" and the like: "tomorrow too". False for the time alone.
    static bool isBareTime(std::string_view core, const LocalTime& around);
};

} // namespace quorvell
