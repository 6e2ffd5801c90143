// SPDX-License-Identifier: MIT
#include "Understanding/requests/ResultMarks.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/requests/CallEffect.h"

#include <optional>
#include <string>
#include <variant>

namespace quorvell {

namespace {

/// With the hour, where a moment was asked about.
DateParts dayOf(const SpokenDays& days)
{
    return days.from == days.to ? days.from : days.from.wholeDay();
}

/// What only looks something up for such words has not done it.
bool wishesChange(const std::string& words)
{
    static const Pattern change(
        "^(?:delete|remove|cancel|change|move|rename|take|clear|shift|push|postpone|tick|mark|drop"
        "|get rid|update|edit|empty|erase|wipe|stop|turn off)\\b",
        Pattern::caseless);
    return change.find(words).has_value();
}

bool isSaid(const RuleStep& step)
{
    return std::holds_alternative<std::string>(step.answer) && !step.memory.pending.isOpen();
}

} // namespace

void ResultMarks::askedDay(const ToolRequest& call, const RequestMemory& before, RuleStep& step)
{
    if (step.memory.asked == RequestMemory::CalendarQuestion::none || !step.memory.days || !CallEffect::isLookUp(call))
        return;
    const bool isOneDay = step.memory.days->isOneDay();
    step.memory.askedDay = isOneDay ? std::optional(dayOf(*step.memory.days)) : std::nullopt;
    step.memory.askedDayAt = before.turn;
}

void ResultMarks::failure(const ToolResult& result, const RequestMemory& before, RuleStep& step)
{
    const bool isDone = !step.memory.acts.empty() && step.memory.acts.back().turn == before.turn;
    if (!isDone && (result.isFailure() || step.isNotFound || (isSaid(step) && wishesChange(before.words))))
        step.memory.failedAt = before.turn;
}

} // namespace quorvell
