// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/AlarmEdits.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/reminding/ReminderSchedule.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderState.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

void AlarmEdits::pause(Note& timer, Instant now)
{
    auto mark = AlarmMark::of(timer);
    if (!mark || !timer.remindAt)
        return;
    const auto left = std::chrono::ceil<std::chrono::seconds>(*timer.remindAt - now);
    mark->left = std::max(left, std::chrono::seconds(1));
    timer.then = mark->stored();
    timer.remindAt.reset();
}

void AlarmEdits::resume(Note& timer, Instant now)
{
    auto mark = AlarmMark::of(timer);
    if (!mark || !mark->left)
        return;
    timer.remindAt = now + *std::exchange(mark->left, {});
    timer.then = mark->stored();
}

void AlarmEdits::startAgain(Note& timer, std::chrono::seconds length, Instant now)
{
    timer.remindAt = now + length;
    timer.then = AlarmMark{.kind = AlarmMark::Kind::timer, .length = length}.stored();
}

void AlarmEdits::lengthen(Note& timer, std::chrono::seconds left, Instant end)
{
    auto mark = AlarmMark::of(timer);
    if (!mark)
        return;
    if (mark->left)
        mark->left = left;
    else
        timer.remindAt = end;
    timer.then = mark->stored();
}

void AlarmEdits::end(Note& alarm, Instant now, const Calendar& calendar)
{
    alarm.repeatRule.reset();
    endOnce(alarm, now, calendar);
    alarm.archived = true;
}

void AlarmEdits::endOnce(Note& alarm, Instant now, const Calendar& calendar)
{
    ReminderSchedule::finish(alarm, now, calendar);
}

void AlarmEdits::rest(Note& alarm, LocalDay until, Instant now, const Calendar& calendar)
{
    constexpr int mostTimes = 1000; // Nearly three years of every day.
    const auto rule = alarm.repeatRule ? ReminderRepeat::fromStored(*alarm.repeatRule) : std::nullopt;
    if (!rule || !alarm.remindAt)
        return end(alarm, now, calendar);
    Instant next = *alarm.remindAt;
    for (int step = 0; step < mostTimes && calendar.day(next) <= until; ++step) {
        const auto after = rule->next(next, next, calendar);
        if (!after)
            return;
        next = *after;
    }
    ReminderState::later(alarm, next);
    if (auto mark = AlarmMark::of(alarm)) {
        mark->snoozedUntil.reset();
        alarm.then = mark->stored();
    }
}

bool AlarmEdits::ringsBy(const Note& alarm, LocalDay until, const Calendar& calendar)
{
    return alarm.remindAt && calendar.day(*alarm.remindAt) <= until;
}

} // namespace quorvell
