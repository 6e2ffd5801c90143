// SPDX-License-Identifier: MIT
// A time of day that is asked about, not one at which something is to happen: "5 pm", "17:30", "noon".
#pragma once

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

struct ClockTime {
    /// What a time may look like, for patterns that take it out of a question.
    static constexpr std::string_view pattern =
        "(?:\\d{1,2}(?:[:.]\\d{2})?(?: ?o['’]?clock)?(?: ?[ap]\\.?m?\\.?(?![a-z]))?(?: tonight| in the "
        "(?:morning|afternoon|evening))?|noon|midday|midnight)";

    /// Both halves of the day where the words do not say which; nothing when they are no time.
    static std::vector<std::chrono::minutes> read(std::string_view words);
};

} // namespace quorvell
