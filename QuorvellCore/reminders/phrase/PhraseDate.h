// SPDX-License-Identifier: MIT
// The instants that a phrase can mean, and how it repeats.
#pragma once

#include "QuorvellCore/reminders/phrase/PhraseFindings.h"

#include <optional>
#include <vector>

namespace quorvell {

struct PhraseDate {
    Instant date{};
    bool hasTime = false;
    std::vector<Instant> alternatives;
    std::optional<ReminderRepeat> repeatRule;

    static PhraseDate resolve(const PhraseFindings& findings, Instant now, const Calendar& calendar);
};

} // namespace quorvell
