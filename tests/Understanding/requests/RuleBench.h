// SPDX-License-Identifier: MIT
// What the tests of the rules share: a session on a Saturday at 1 PM, and conversations that stand in fixtures.
#pragma once

#include "FixtureTable.h"
#include "Understanding/requests/RequestRules.h"

#include <chrono>
#include <map>
#include <string>
#include <variant>

namespace quorvell {

/// Reminders and notes are offered.
inline RuleSurroundings surroundings()
{
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    return {{day + std::chrono::hours(12), *Calendar::create("Europe/Berlin", "en_US")},
        {"set_reminder", "keep_note", "find_in_notebook", "read_note"}};
}

/// All that there is on this computer is offered.
inline RuleSurroundings withCalendar()
{
    RuleSurroundings around = surroundings();
    around.tools.insert({"whats_on", "find_free_time", "add_event", "change_event", "remember_about_them", "set_mode"});
    return around;
}

/// "tool arguments" or what is said.
inline std::string shown(const RuleStep& step)
{
    if (const auto* request = std::get_if<ToolRequest>(&step.answer))
        return request->name + " " + request->arguments;
    return std::get<std::string>(step.answer);
}

using Results = std::map<std::string, std::string>; ///< Long ones, by the names that stand for them.

/// What follows from a line: words, or a tool's result, which begins with its tool where that was not just called.
inline RuleStep followed(
    std::string line, ToolRequest& call, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::size_t brace = line.find(" {");
    if (brace != std::string::npos && line.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == brace) {
        call = {line.substr(0, brace), "{}"};
        line = line.substr(brace + 1);
    }
    const bool isResult = line.starts_with("{") || line.starts_with("[") || line == "null";
    return isResult ? RequestRules::answerResult(call, line, memory, around)
                    : RequestRules::answerWords(line, memory, around);
}

/// Plays the conversations of tests/fixtures/understanding/<name>: under each line stands what follows from it.
inline void checkConversations(const std::string& name, const RuleSurroundings& around, const Results& results = {})
{
    for (const auto& row : test::fixtureRows("understanding/" + name)) {
        RequestMemory memory;
        ToolRequest call;
        EXPECT_EQ(row.lines.size() % 2, 0U) << row.lines.front();
        for (std::size_t line = 0; line + 1 < row.lines.size(); line += 2) {
            const auto named = results.find(row.lines[line]);
            const RuleStep step =
                followed(named != results.end() ? named->second : row.lines[line], call, memory, around);
            EXPECT_EQ(shown(step), row.lines[line + 1]) << row.lines.front() << " ... " << row.lines[line];
            memory = step.memory;
            if (const auto* request = std::get_if<ToolRequest>(&step.answer))
                call = *request;
        }
    }
}

constexpr const char* nothingDue =
    R"({"error":"Nothing was changed: no reminder is due. Call set_reminder with list and ask which."})";

} // namespace quorvell
