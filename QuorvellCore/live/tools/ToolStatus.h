// SPDX-License-Identifier: MIT
// What a tool says that it did, or what it needs first.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvell {

enum class ToolStatus : std::uint8_t {
    none, ///< The answer says nothing of it, nor that it failed.
    other, ///< It says something that is not known here; ToolResult keeps the text.
    failed, ///< Told by {"error"} and not by a status.
    refused,
    switched,
    // Reminders
    set,
    whichTime,
    needsTime,
    needsTask,
    reminders,
    whichReminder,
    whichOccurrences,
    deferred,
    done,
    // The notebook
    kept,
    found,
    read,
    shown,
    known,
    remembered,
    notRemembered,
    list, ///< What is on one of the user's lists.
    lists,
    whichList,
    noList,
    whichItem,
    notOnList, ///< None of what was named is; nothing was changed.
    forgotten,
    whichFact,
    // The calendar
    agenda,
    free,
    added,
    changed,
    deleted,
    // The screen
    acted, ///< A step was done.
    finished, ///< A whole task was.
    needsUser, ///< A task that cannot go on without their answer.
    gaveUp,
    stopped, ///< By the user.
    undone,
    confirmationHandled, ///< The action that waited for a yes was carried out, or failed in being so.
    scamFlagged,
    looked,
    highlighted,
    // Any
    needsConfirmation,
};

/// "which_time" and the like; empty for the first three.
std::string_view storedText(ToolStatus status);

/// Whether nothing was done yet because something has to be asked first.
bool asksBack(ToolStatus status);

/// Exactly one of the stored texts, else nothing.
std::optional<ToolStatus> toolStatus(std::string_view stored);

} // namespace quorvell
