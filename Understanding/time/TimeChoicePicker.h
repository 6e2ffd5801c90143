// SPDX-License-Identifier: MIT
// Settles which of several instants the user means.
#pragma once

#include "Understanding/time/TimeChoice.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

struct TimeChoicePicker {
    /// The date that `words` settle on: one of the choices ("the afternoon", "5 pm", "the first one"), or the day of
    /// the fitting one at another time of day ("6 pm instead"). Nothing when the words leave it open.
    static std::optional<DateParts> pick(std::string_view words, const std::vector<TimeChoice>& choices);
};

} // namespace quorvell
