// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ToolText.h"

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/live/tools/ToolTraits.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace quorvell {

namespace {

std::string plural(std::int64_t count, std::string singular)
{
    if (count == 1)
        return "1 " + singular;
    if (singular.ends_with('y'))
        singular.replace(singular.size() - 1, 1, "ie");
    return (count == 0 ? "no" : std::to_string(count)) + " " + singular + "s";
}

std::string countOf(const ToolResult& result, const ToolOutcome& outcome)
{
    const Json* list = result.list(outcome.list);
    const auto listed = list != nullptr ? static_cast<std::int64_t>(list->size()) : 0;
    return plural(readInteger(result.json(), "count").value_or(listed), std::string(outcome.counted));
}

/// The title, and when: "Call mum, Sunday 22 November at 5 PM, every day".
std::string subjectOf(const ToolResult& result)
{
    std::string subject;
    const auto add = [&](const char* key, const char* before) {
        if (const auto text = result.string(key); text && !text->empty())
            subject += (subject.empty() ? "" : before) + *text;
    };
    const std::string task = result.string("task").value_or("");
    const bool isPlainAlarm = memberOf(result.json(), "kind") && (task == "Alarm" || task == "Timer");
    for (const char* key : {"task", "title", "fact"})
        if (!isPlainAlarm)
            add(key, ", ");
    add("when", ", ");
    add("repeat_words", ", ");
    add("next", ", next ");
    return subject;
}

/// "Reminder set" of an alarm or a timer as "Alarm set".
std::string wordsOf(const ToolOutcome& outcome, const std::string& kind)
{
    constexpr std::string_view reminder = "Reminder ";
    const std::string words(outcome.words);
    const char* name = kind == "alarm" ? "Alarm " : kind == "timer" ? "Timer " : nullptr;
    return name && words.starts_with(reminder) ? name + words.substr(reminder.size()) : words;
}

std::string readableName(std::string toolName)
{
    std::replace(toolName.begin(), toolName.end(), '_', ' ');
    return printableLine(toolName);
}

} // namespace

std::optional<std::string> ToolText::of(const LiveFunctionResponse& response)
{
    const ToolResult result = ToolResult::of(response.response);
    if (result.failure() == ToolFailure::noReminderDue) // Another one is meant, which is found or asked about next.
        return std::nullopt;
    if (result.isFailure() || result.status() == ToolStatus::refused)
        return "not done: " + readableName(response.name);
    if (asksBack(result.status()))
        return std::nullopt;
    const ToolTraits* tool = ToolTraits::find(response.name);
    const ToolOutcome* outcome = tool ? tool->outcome(result.status()) : nullptr;
    if (!outcome)
        return "done: " + readableName(response.name);
    if (outcome->words.empty())
        return std::nullopt;
    const std::string told = outcome->counted.empty() ? subjectOf(result) : countOf(result, *outcome);
    return wordsOf(*outcome, result.string("kind").value_or("")) + (told.empty() ? "" : ": " + told);
}

std::string ToolText::running(const std::string& toolName)
{
    const ToolTraits* tool = ToolTraits::find(toolName);
    return tool ? std::string(tool->running) : readableName(toolName);
}

} // namespace quorvell
