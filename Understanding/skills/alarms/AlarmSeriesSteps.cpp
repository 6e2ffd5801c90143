// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmSeriesSteps.h"

#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/skills/alarms/AlarmSeries.h"

#include <utility>
#include <variant>

namespace quorvell {

namespace {

std::string toldOf(const AlarmTalk::Series& series)
{
    std::string text;
    for (const std::string& one : series.told)
        text += (text.empty() ? "" : "; ") + one;
    if (!series.lead.empty())
        return series.lead
            + (series.told.empty()            ? ""
                    : series.told.size() == 1 ? " Until then it rings as a single alarm: " + text + "."
                                              : " Until then it rings as single alarms: " + text + ".");
    return series.told.size() == 1 ? "Your alarm is set for " + text + "."
                                   : "I set " + std::to_string(series.told.size()) + " alarms: " + text + ".";
}

} // namespace

RuleStep AlarmSeriesSteps::begin(const std::vector<std::string>& times, const std::string& name, bool isWaking,
    RequestMemory memory, const RuleSurroundings& around)
{
    memory.alarms = {.isWaking = isWaking, .series = {.left = {times.begin() + 1, times.end()}, .name = name}};
    const auto call = AlarmCalls{around}.setAlarm(times.front(), name);
    return {call, std::move(memory)};
}

RuleStep AlarmSeriesSteps::standIn(std::string lead, RequestMemory memory, const RuleSurroundings& around)
{
    AlarmTalk::Series series = std::move(memory.alarms.series);
    series.lead = std::move(lead);
    const std::string time = series.left.front();
    series.left.erase(series.left.begin());
    const auto call = AlarmCalls{around}.setAlarm(time, series.name);
    memory.alarms = {.series = std::move(series)};
    return {call, std::move(memory)};
}

bool AlarmSeriesSteps::isUnderWay(const RequestMemory& memory)
{
    const AlarmTalk::Series& series = memory.alarms.series;
    return !series.left.empty() || !series.told.empty() || !series.lead.empty();
}

RuleStep AlarmSeriesSteps::goOn(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    AlarmTalk::Series& series = memory.alarms.series;
    const AlarmItem item = AlarmItem::of(result.json());
    const bool wasThere = readBool(result.json(), "already").value_or(false);
    series.told.push_back(item.described(around) + (wasThere ? ", which was set before" : ""));
    memory.talkOf(AlarmCalls::skill);
    if (series.left.empty()) {
        const std::string told = toldOf(series);
        memory.alarms = {}; // "It" could be any of them.
        return ToolResults::say(told, std::move(memory));
    }
    const std::string time = item.thing.start
        ? AlarmSeries::following(series.left.front(), *item.thing.start, item.rule.has_value())
        : series.left.front();
    series.left.erase(series.left.begin());
    const auto call = AlarmCalls{around}.setAlarm(time, series.name);
    return {call, std::move(memory)};
}

RuleStep AlarmSeriesSteps::brokenOff(const AlarmTalk::Series& series, RuleStep step)
{
    auto* said = std::get_if<std::string>(&step.answer);
    if (said && (!series.told.empty() || !series.lead.empty())) {
        *said = toldOf(series) + " " + *said;
        step.memory.pending.question = step.memory.pending.isOpen() ? *said : "";
    }
    return step;
}

} // namespace quorvell
