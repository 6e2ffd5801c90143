// SPDX-License-Identifier: MIT
// What is known of a phrase before the patterns are run over it.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <vector>

namespace quorvell {

/// Ranges in the lower-cased text.
struct PhraseHints {
    std::vector<TextRange> notTimes; ///< Never part of a time, whatever they look like.
    std::optional<LocalDay> day;
    std::vector<TextRange> dayWords; ///< The words that named `day`.
};

} // namespace quorvell
