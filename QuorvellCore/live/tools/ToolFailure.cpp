// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolFailure.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

struct Told {
    ToolFailure failure;
    std::string_view sentence;
};

constexpr auto table = std::to_array<Told>({
    {ToolFailure::noReminderWithID,
        "Nothing was changed: no pending reminder has that id. Call set_reminder with list."},
    {ToolFailure::noReminderWithWords,
        "Nothing was changed: no pending reminder has these words. Call set_reminder with list and ask which."},
    {ToolFailure::noReminderDue, "Nothing was changed: no reminder is due. Call set_reminder with list and ask which."},
});

} // namespace

std::string_view sentenceOf(ToolFailure failure)
{
    const auto* row = std::ranges::find(table, failure, &Told::failure);
    return row == table.end() ? std::string_view() : row->sentence;
}

std::optional<ToolFailure> toolFailure(std::string_view sentence)
{
    const auto* row = std::ranges::find(table, sentence, &Told::sentence);
    return row == table.end() ? std::nullopt : std::optional(row->failure);
}

} // namespace quorvell
