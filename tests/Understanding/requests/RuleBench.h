// SPDX-License-Identifier: MIT
// What the tests of the rules share: a session that offers reminders and notes, on a Saturday at 1 PM.
#pragma once

#include "Understanding/requests/RequestRules.h"

#include <chrono>
#include <string>
#include <variant>

namespace quorvell {

inline RuleSurroundings surroundings()
{
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    return {{day + std::chrono::hours(12), *Calendar::create("Europe/Berlin", "en_US")},
        {"set_reminder", "keep_note", "find_in_notebook", "read_note"}};
}

/// "tool arguments" or what is said.
inline std::string shown(const RuleStep& step)
{
    if (const auto* request = std::get_if<ToolRequest>(&step.answer))
        return request->name + " " + request->arguments;
    return std::get<std::string>(step.answer);
}

} // namespace quorvell
