// SPDX-License-Identifier: MIT
// The days that a request names in more than one word: "saturday 20 march", "20 march 2027", "2027-03-20".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <optional>
#include <vector>

namespace quorvell {

/// One day that the patterns cannot read by themselves, because it has a year or is named twice over. Nothing is said
/// of the simpler ones.
struct SaidDates {
    std::optional<LocalDay> day;
    std::vector<TextRange> words; ///< Those that named `day`, in the lower-cased text.
    /// The words name days that do not agree ("saturday 21 march" of a year where that is a Sunday), or one that does
    /// not exist.
    bool isContradiction = false;

    static SaidDates find(const RequestTokens& tokens, LocalDay today);
};

} // namespace quorvell
