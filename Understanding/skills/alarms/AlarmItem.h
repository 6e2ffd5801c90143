// SPDX-License-Identifier: MIT
// An alarm or a timer that set_reminder named, and which of several is meant.
#pragma once

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"
#include "Understanding/time/SpokenDays.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct AlarmItem {
    FoundThing thing{};
    bool isTimer = false;
    bool isPaused = false;
    bool isMissed = false;
    bool wasSetLast = false; ///< Of several that were listed.
    std::chrono::seconds left{0}; ///< Of a timer.
    std::optional<ReminderRepeat> rule{};
    std::string often{}; ///< "every weekday"; empty for once.

    static AlarmItem of(const Json& item);
    static std::vector<AlarmItem> listed(const Json& result);

    /// "7 AM tomorrow", "6:45 AM every weekday", "Gym, 7 AM tomorrow"; of a timer "the pasta timer".
    std::string described(const LocalTime& around) const;
    /// "7 AM tomorrow".
    std::string when(const LocalTime& around) const;
    /// "the pasta timer", "the timer", "the alarm for 7 AM tomorrow".
    std::string named(const LocalTime& around) const;

    /// Next, or once more by its rule within the two weeks after that.
    bool ringsOn(const SpokenDays& days, const LocalTime& around) const;

    bool operator==(const AlarmItem&) const = default;
};

} // namespace quorvell
