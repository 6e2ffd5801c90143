// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ToolText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvell {

namespace {

/// What a tool answers, and how it is told. The member "count" or the list that is named is put before a plural.
struct Wording {
    std::string_view tool; ///< Empty: any.
    std::string_view status;
    const char* words; ///< Null: not told.
    const char* counted = nullptr; ///< What is counted, in the singular.
    const char* list = nullptr; ///< The member whose length it is, where there is no "count".
};

constexpr std::array wordings{
    Wording{"set_reminder", "set", "Reminder set"}, Wording{"set_reminder", "deferred", "Reminder moved"},
    Wording{"set_reminder", "done", "Reminder done"},
    Wording{"set_reminder", "reminders", "Reminders looked up", "reminder"}, Wording{"keep_note", "kept", "Note kept"},
    Wording{"explain", "kept", "Explanation kept"}, Wording{"save_how_to", "kept", "How-to kept"},
    Wording{"find_in_notebook", "found", "Notebook searched", "note"}, Wording{"read_note", "read", "Note read"},
    Wording{"open_notebook", "shown", "Shown on the desktop"},
    Wording{"remember_about_them", "remembered", "Remembered"},
    Wording{"remember_about_them", "known", "Known already"},
    Wording{"remember_about_them", "not_remembered", "Not remembered"},
    Wording{"whats_on", "agenda", "Calendar looked up", "entry"},
    Wording{"find_free_time", "free", "Free time looked up", "free time", "slots"},
    Wording{"add_event", "added", "Put in the calendar"}, Wording{"change_event", "changed", "Calendar changed"},
    Wording{"change_event", "deleted", "Deleted from the calendar"}, Wording{"", "which_time", nullptr},
    Wording{"", "needs_time", nullptr}, Wording{"", "needs_task", nullptr}, Wording{"", "which_reminder", nullptr},
    Wording{"", "needs_confirmation", nullptr},
    Wording{"set_mode", "switched", nullptr}, // Told where every change of the mode is.
};

std::string plural(std::int64_t count, std::string singular)
{
    if (count == 1)
        return "1 " + singular;
    if (singular.ends_with('y'))
        singular.replace(singular.size() - 1, 1, "ie");
    return (count == 0 ? "no" : std::to_string(count)) + " " + singular + "s";
}

std::string countOf(const Json& result, const Wording& wording)
{
    const Json* list = wording.list != nullptr ? memberOf(result, wording.list) : nullptr;
    const auto listed = list != nullptr ? static_cast<std::int64_t>(list->size()) : 0;
    return plural(readInteger(result, "count").value_or(listed), wording.counted);
}

/// The title, and when: "Call mum, Sunday 22 November at 5 PM, every day".
std::string subjectOf(const Json& result)
{
    std::string subject;
    const auto add = [&](const char* key, const char* before) {
        if (const auto text = readString(result, key); text && !text->empty())
            subject += (subject.empty() ? "" : before) + *text;
    };
    for (const char* key : {"task", "title", "fact"})
        add(key, ", ");
    add("when", ", ");
    add("repeat_words", ", ");
    add("next", ", next ");
    return subject;
}

} // namespace

std::optional<std::string> ToolText::of(const LiveFunctionResponse& response)
{
    const Json& result = response.response;
    const std::string status = readString(result, "status").value_or("");
    if (memberOf(result, "error") != nullptr || status == "refused")
        return "not done: " + readableName(response.name);
    const auto* wording = std::find_if(wordings.begin(), wordings.end(), [&](const Wording& known) {
        return known.status == status && (known.tool.empty() || known.tool == response.name);
    });
    if (wording == wordings.end())
        return "done: " + readableName(response.name);
    if (wording->words == nullptr)
        return std::nullopt;
    const std::string told = wording->counted != nullptr ? countOf(result, *wording) : subjectOf(result);
    return std::string(wording->words) + (told.empty() ? "" : ": " + told);
}

std::string ToolText::readableName(std::string toolName)
{
    std::replace(toolName.begin(), toolName.end(), '_', ' ');
    return toolName;
}

} // namespace quorvell
