// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

namespace quorvell {

std::string_view storedText(ReminderTrigger trigger)
{
    switch (trigger) {
    case ReminderTrigger::time:
        return "time";
    case ReminderTrigger::backAtMac:
        return "back_at_mac";
    }
    return {};
}

std::optional<ReminderTrigger> reminderTrigger(std::string_view stored)
{
    for (const auto trigger : {ReminderTrigger::time, ReminderTrigger::backAtMac}) {
        if (stored == storedText(trigger))
            return trigger;
    }
    return std::nullopt;
}

} // namespace quorvell
