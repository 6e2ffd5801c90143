// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolStatus.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

struct Stored {
    ToolStatus status;
    std::string_view text;
};

constexpr auto table = std::to_array<Stored>({
    {ToolStatus::refused, "refused"},
    {ToolStatus::switched, "switched"},
    {ToolStatus::set, "set"},
    {ToolStatus::whichTime, "which_time"},
    {ToolStatus::needsTime, "needs_time"},
    {ToolStatus::needsTask, "needs_task"},
    {ToolStatus::reminders, "reminders"},
    {ToolStatus::whichReminder, "which_reminder"},
    {ToolStatus::whichOccurrences, "which_occurrences"},
    {ToolStatus::deferred, "deferred"},
    {ToolStatus::done, "done"},
    {ToolStatus::kept, "kept"},
    {ToolStatus::found, "found"},
    {ToolStatus::read, "read"},
    {ToolStatus::shown, "shown"},
    {ToolStatus::known, "known"},
    {ToolStatus::remembered, "remembered"},
    {ToolStatus::notRemembered, "not_remembered"},
    {ToolStatus::list, "list"},
    {ToolStatus::lists, "lists"},
    {ToolStatus::whichList, "which_list"},
    {ToolStatus::noList, "no_list"},
    {ToolStatus::whichItem, "which_item"},
    {ToolStatus::notOnList, "not_on_list"},
    {ToolStatus::forgotten, "forgotten"},
    {ToolStatus::whichFact, "which_fact"},
    {ToolStatus::agenda, "agenda"},
    {ToolStatus::free, "free"},
    {ToolStatus::added, "added"},
    {ToolStatus::changed, "changed"},
    {ToolStatus::deleted, "deleted"},
    {ToolStatus::acted, "acted"},
    {ToolStatus::finished, "finished"},
    {ToolStatus::needsUser, "needs_user"},
    {ToolStatus::gaveUp, "gave_up"},
    {ToolStatus::stopped, "stopped"},
    {ToolStatus::undone, "undone"},
    {ToolStatus::confirmationHandled, "confirmation handled"},
    {ToolStatus::scamFlagged, "scam_flagged"},
    {ToolStatus::looked, "looked"},
    {ToolStatus::highlighted, "highlighted"},
    {ToolStatus::needsConfirmation, "needs_confirmation"},
});

} // namespace

std::string_view storedText(ToolStatus status)
{
    const auto* row = std::ranges::find(table, status, &Stored::status);
    return row == table.end() ? std::string_view() : row->text;
}

bool asksBack(ToolStatus status)
{
    return status == ToolStatus::whichTime || status == ToolStatus::needsTime || status == ToolStatus::needsTask
        || status == ToolStatus::whichReminder || status == ToolStatus::whichOccurrences
        || status == ToolStatus::whichList || status == ToolStatus::noList || status == ToolStatus::whichItem
        || status == ToolStatus::whichFact || status == ToolStatus::needsUser
        || status == ToolStatus::needsConfirmation;
}

std::optional<ToolStatus> toolStatus(std::string_view stored)
{
    const auto* row = std::ranges::find(table, stored, &Stored::text);
    return row == table.end() ? std::nullopt : std::optional(row->status);
}

} // namespace quorvell
