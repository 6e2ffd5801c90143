// SPDX-License-Identifier: MIT
// What was asked back and is still open.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/SettledTime.h"
#include "Understanding/time/TimeChoice.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct QuestionKind;

struct PendingQuestion {
    static constexpr int patience = 1; ///< So many answers that fit nothing are asked about again.

    const QuestionKind* kind = nullptr; ///< One of a skill's; nothing while nothing is asked.
    std::string question{}; ///< As it was asked.
    std::string task{}; ///< Words of what it is about.
    std::optional<DateParts> date{};
    std::string repeat{}; ///< Stored form; empty for none.
    std::vector<TimeChoice> choices{};
    SettledTime settled{}; ///< What was said of the time already, and is clear.
    std::string tool{}; ///< Of the call that is to be made again; empty when the answer makes another one.
    std::string arguments{}; ///< A JSON object.
    int misses = 0;
    bool isTakenUpAgain = false; ///< It was put aside once: that is enough.

    bool isOpen() const { return kind != nullptr; }

    bool operator==(const PendingQuestion&) const = default;
};

} // namespace quorvell
