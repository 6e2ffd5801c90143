// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmCalls.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/SpokenToWritten.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr const char* setting = "set alarms";
constexpr const char* changing = "change alarms";

Json withName(Json arguments, std::string_view name)
{
    if (!name.empty())
        arguments["task"] = name;
    return arguments;
}

} // namespace

bool AlarmCalls::owns(const ToolRequest& call)
{
    constexpr std::array keys{
        "alarm", "timer_seconds", "kind", "pause", "resume", "add_seconds", "stop", "snooze_minutes", "ids"};
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    return call.name == tool
        && std::ranges::any_of(keys, [&](const char* key) { return memberOf(arguments, key) != nullptr; });
}

ToolCalls::Answer AlarmCalls::setAlarm(std::string_view text, std::string_view name) const
{
    return ToolCalls::call(around, tool, withName({{"alarm", true}, {"text", spokenToWritten(text)}}, name), setting);
}

ToolCalls::Answer AlarmCalls::setAlarmAt(std::string_view title, const DateParts& date, std::string_view repeat) const
{
    Json arguments = withName({{"alarm", true}, {"date", date.text()}}, title);
    if (!repeat.empty())
        arguments["repeat"] = repeat;
    return ToolCalls::call(around, tool, arguments, setting);
}

ToolCalls::Answer AlarmCalls::setTimer(std::chrono::seconds length, std::string_view name) const
{
    return ToolCalls::call(around, tool, withName({{"timer_seconds", length.count()}}, name), "set timers");
}

ToolCalls::Answer AlarmCalls::startAgain(std::string_view id, std::chrono::seconds length) const
{
    return ToolCalls::call(around, tool, {{"id", id}, {"timer_seconds", length.count()}}, "change timers");
}

ToolCalls::Answer AlarmCalls::list(const char* kind) const
{
    return ToolCalls::call(around, tool, {{"kind", kind}, {"list", true}}, "list alarms");
}

ToolCalls::Answer AlarmCalls::stop() const
{
    return ToolCalls::call(around, tool, {{"stop", true}}, changing);
}

ToolCalls::Answer AlarmCalls::snooze(std::chrono::minutes length) const
{
    return ToolCalls::call(around, tool, {{"snooze_minutes", length.count()}}, changing);
}

ToolCalls::Answer AlarmCalls::withTimer(const char* flag, std::string_view name) const
{
    return ToolCalls::call(around, tool, withName({{"kind", "timer"}, {flag, true}}, name), "change timers");
}

ToolCalls::Answer AlarmCalls::add(std::chrono::seconds length, std::string_view name, bool isOfAny) const
{
    const char* kind = isOfAny ? "all" : "timer";
    return ToolCalls::call(
        around, tool, withName({{"kind", kind}, {"add_seconds", length.count()}}, name), "change timers");
}

ToolCalls::Answer AlarmCalls::cancel(const char* kind) const
{
    return ToolCalls::call(around, tool, {{"kind", kind}, {"cancel", true}}, changing);
}

ToolCalls::Answer AlarmCalls::cancelThis(std::string_view id, bool isOfTimers) const
{
    return ToolCalls::call(around, tool, {{"kind", kindOf(isOfTimers)}, {"cancel", true}, {"id", id}}, changing);
}

ToolCalls::Answer AlarmCalls::cancelThese(const std::vector<std::string>& ids) const
{
    return ToolCalls::call(around, tool, {{"cancel", true}, {"ids", ids}}, changing);
}

ToolCalls::Answer AlarmCalls::cancelUntil(const std::vector<std::string>& ids, const DateParts& day) const
{
    Json arguments{{"cancel", true}, {"until", day.wholeDay().text()}};
    if (ids.size() == 1)
        arguments.update({{"kind", "alarm"}, {"id", ids.front()}});
    else
        arguments["ids"] = ids;
    return ToolCalls::call(around, tool, arguments, changing);
}

ToolCalls::Answer AlarmCalls::rename(std::string_view id, bool isOfTimers, std::string_view name) const
{
    return ToolCalls::call(around, tool, {{"kind", kindOf(isOfTimers)}, {"id", id}, {"task", name}}, changing);
}

ToolCalls::Answer AlarmCalls::repeatThis(std::string_view id, std::string_view stored) const
{
    return ToolCalls::call(around, tool, {{"kind", "alarm"}, {"id", id}, {"repeat", stored}}, changing);
}

ToolCalls::Answer AlarmCalls::moveThis(std::string_view id, std::string_view when) const
{
    return ToolCalls::call(around, tool, {{"kind", "alarm"}, {"id", id}, {"later", spokenToWritten(when)}}, changing);
}

} // namespace quorvell
