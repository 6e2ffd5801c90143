// SPDX-License-Identifier: MIT
#include "LiveService/rules/ReminderRules.h"

#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/ToolRequests.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Topic = RequestMemory::Topic;

constexpr std::size_t dayLength = 10; ///< "2026-11-22"

RuleStep list(const SpokenDays& days, RequestMemory memory, const ToolRequests& requests)
{
    memory.days = days.words;
    memory.firstDay = days.from.substr(0, dayLength);
    memory.lastDay = days.to.substr(0, dayLength);
    return {requests.listReminders(), std::move(memory)};
}

/// "And on friday?", after the calendar was asked about another day.
std::optional<RuleStep> askFurther(const std::string& when, RequestMemory& memory, const RuleSurroundings& around)
{
    const bool isFree = memory.topic == Topic::freeTime;
    if (!isFree && memory.topic != Topic::events)
        return std::nullopt;
    auto days = SpokenDays::read(when, around);
    if (!days)
        return std::nullopt;
    const AgendaIntent asking{.kind = isFree ? AgendaIntent::Kind::findTime : AgendaIntent::Kind::list,
        .days = std::move(*days),
        .minutes = memory.freeMinutes};
    return AgendaRules::answer(asking, std::move(memory), around);
}

/// "No, tomorrow" leaves the hour as it was, "make it 6" the day. A length of time counts from now, and is none of
/// this.
std::optional<RuleStep> correct(const ReminderChange& change, RequestMemory& memory, const RuleSurroundings& around)
{
    if (!change.task.empty() || change.when == "later")
        return std::nullopt;
    if (auto asked = askFurther(change.when, memory, around))
        return asked;
    const auto length = SpokenLength::read(change.when);
    if (memory.topic == Topic::event) {
        const AgendaIntent moving{.kind = AgendaIntent::Kind::move,
            .minutes = length ? length->minutes : 0,
            .when = length ? std::string() : change.when};
        return AgendaRules::answer(moving, std::move(memory), around);
    }
    if (length || memory.topic != Topic::reminder || memory.reminderDate.empty())
        return std::nullopt;
    const auto date = SpokenMoment::movedTo(change.when, memory.reminderDate, around);
    if (!date)
        return std::nullopt;
    const ToolRequests requests{around};
    const auto call = requests.putOffReminder({}, SpokenWhen::fromDate(*date));
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return RuleStep{call, std::move(memory)};
    return RuleStep{requests.chosen(request->name, request->arguments, memory.reminder), std::move(memory)};
}

} // namespace

RuleStep ReminderRules::set(const ReminderIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    if (intent.isBare)
        return RuleStep::asking(
            {.kind = PendingQuestion::Kind::wholeReminder, .question = "What do you want to be reminded of, and when?"},
            std::move(memory));
    memory.request = intent.text;
    return {ToolRequests{around}.remindFromWords(intent.text), std::move(memory)};
}

RuleStep ReminderRules::change(const ReminderChange& change, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    memory.request.clear();
    switch (change.kind) {
    case ReminderChange::Kind::list:
        return list(change.days, std::move(memory), requests);
    case ReminderChange::Kind::done:
        return {requests.finishReminder(change.task), std::move(memory)};
    case ReminderChange::Kind::later:
        break;
    }
    if (auto corrected = correct(change, memory, around))
        return *std::move(corrected);
    return {requests.putOffReminder(change.task, change.when), std::move(memory)};
}

} // namespace quorvell
