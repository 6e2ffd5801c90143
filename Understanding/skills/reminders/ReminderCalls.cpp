// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderCalls.h"

#include "Understanding/time/SpokenToWritten.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr const char* changing = "change reminders";

Json ofTask(std::string_view task)
{
    Json arguments = Json::object();
    if (!task.empty())
        arguments["task"] = task;
    return arguments;
}

} // namespace

ToolCalls::Answer ReminderCalls::set(std::string_view text, std::string_view repeat) const
{
    Json arguments{{"text", spokenToWritten(text)}};
    if (!repeat.empty())
        arguments["repeat"] = repeat;
    return ToolCalls::call(around, tool, arguments, "set reminders");
}

ToolCalls::Answer ReminderCalls::setTask(std::string_view task, std::string_view time) const
{
    return ToolCalls::call(around, tool, {{"task", task}, {"text", spokenToWritten(time)}}, "set reminders");
}

ToolCalls::Answer ReminderCalls::setAt(std::string_view task, const DateParts& date, std::string_view repeat) const
{
    Json arguments{{"task", task}, {"date", date.text()}};
    if (!repeat.empty())
        arguments["repeat"] = repeat;
    return ToolCalls::call(around, tool, arguments, "set reminders");
}

ToolCalls::Answer ReminderCalls::setOnReturn(std::string_view task) const
{
    return ToolCalls::call(around, tool, {{"task", task}, {"when_back", true}}, "set reminders");
}

ToolCalls::Answer ReminderCalls::list() const
{
    return ToolCalls::call(around, tool, {{"list", true}}, "look at your reminders");
}

ToolCalls::Answer ReminderCalls::finish(std::string_view task) const
{
    Json arguments = ofTask(task);
    arguments["done"] = true;
    return ToolCalls::call(around, tool, arguments, changing);
}

ToolCalls::Answer ReminderCalls::cancel(std::string_view task) const
{
    Json arguments = ofTask(task);
    arguments["cancel"] = true;
    return ToolCalls::call(around, tool, arguments, changing);
}

ToolCalls::Answer ReminderCalls::putOff(std::string_view task, std::string_view when) const
{
    Json arguments = ofTask(task);
    arguments["later"] = when;
    return ToolCalls::call(around, tool, arguments, changing);
}

ToolCalls::Answer ReminderCalls::finishThis(std::string_view id) const
{
    return ToolCalls::call(around, tool, {{"done", true}, {"id", id}}, changing);
}

ToolCalls::Answer ReminderCalls::cancelThis(std::string_view id) const
{
    return ToolCalls::call(around, tool, {{"cancel", true}, {"id", id}}, changing);
}

ToolCalls::Answer ReminderCalls::cancelThis(std::string_view id, bool isOfSeries) const
{
    return ToolCalls::call(around, tool, {{"cancel", true}, {"id", id}, {"series", isOfSeries}}, changing);
}

ToolCalls::Answer ReminderCalls::repeatThis(
    std::string_view id, const std::optional<DateParts>& first, std::string_view rule) const
{
    Json arguments{{"id", id}, {"repeat", rule}};
    if (first)
        arguments["date"] = first->text();
    return ToolCalls::call(around, tool, arguments, changing);
}

ToolCalls::Answer ReminderCalls::putOffThis(std::string_view id, std::string_view when) const
{
    return ToolCalls::call(around, tool, {{"later", when}, {"id", id}}, changing);
}

} // namespace quorvell
