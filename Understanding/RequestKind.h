// SPDX-License-Identifier: MIT
// What can be asked for.
#pragma once

#include <cstdint>

namespace quorvell {

/// Where the evidence for two is the same, the earlier one is tried first.
enum class RequestKind : std::uint8_t {
    remind,
    remember, ///< A fact, a note or a reminder, as what is to be remembered shows.
    listReminders,
    finishReminder,
    putOffReminder,
    listEvents,
    nextEvent,
    findTime,
    addEvent,
    moveEvent,
    cancelEvent,
    keepNote,
    readNote,
    findNote,
    openNotebook,
    deleteNote,
    addAnother, ///< More of what was just asked for.
    count, ///< How many there are; none of them.
};

} // namespace quorvell
