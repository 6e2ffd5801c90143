// SPDX-License-Identifier: MIT
// Which of several alarms or timers words mean. Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/time/LocalTime.h"
#include "Understanding/time/SpokenDays.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Those that words tell from the others: by hour, half of the day, day, place in the list, or name; "all except ...".
struct AlarmsMeant {
    std::vector<AlarmItem> items{};
    bool isUnderstood = true; ///< Else some of the words say something that nothing could be told by.
    bool isNarrowed = false; ///< The words said which.
    std::string words{}; ///< What was looked for, behind "no alarm": "for 6 AM tomorrow", "for \"gym\"".
    std::optional<SpokenDays> days{}; ///< The days that were named, unless a rule was named: "every weekday".

    static AlarmsMeant among(const std::vector<AlarmItem>& items, std::string_view which, const LocalTime& around);
};

} // namespace quorvell
