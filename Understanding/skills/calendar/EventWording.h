// SPDX-License-Identifier: MIT
// Questions about the calendar in unusual order, or cut short, as most people would ask them. Pure.
#pragma once

#include <string>

namespace quorvell {

struct EventWording {
    /// "I forgot when the dentist is", "today any meeting is there", "dentist when", "first event next week": `plain`
    /// is in the form of CalendarWords. The words themselves where they are no such question.
    static std::string asked(const std::string& plain);
};

} // namespace quorvell
