// SPDX-License-Identifier: MIT
// An alarm that is there goes to another hour: "change my alarm from 7 to 8", "an hour later". Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmWish.h"

#include <string>

namespace quorvell {

struct AlarmMove {
    /// Behind a verb that could as well set a new one: "set my 6:30 alarm to 6:45". `front` is without the verb.
    static bool isMeant(const AlarmLine& cut, const std::string& front);
    static AlarmWish read(const AlarmLine& cut, const std::string& front);
};

} // namespace quorvell
