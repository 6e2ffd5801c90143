// SPDX-License-Identifier: MIT
// What the patterns find in a lower-cased phrase, and the date it comes to.
#pragma once

#include "QuorvellCore/reminders/phrase/PhraseDate.h"
#include "QuorvellCore/reminders/phrase/PhraseFindings.h"
#include "QuorvellCore/reminders/phrase/PhraseHints.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct PhraseReading {
    PhraseFindings findings;
    PhraseDate date;

    /// Nothing when the text names no date and no time, or the clock is broken.
    static std::optional<PhraseReading> of(
        std::string_view lowerCased, const PhraseHints& hints, Instant now, const Calendar& calendar);
};

} // namespace quorvell
