// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/ReminderNotices.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/reminding/AlarmRinging.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <functional>

namespace quorvell {

namespace {

constexpr std::size_t longestTask = 120; ///< Characters; a notice is a glance.
constexpr std::size_t longestBody = 300;
constexpr std::size_t namedInSummary = 6;

std::string taskOf(const Note& note)
{
    const std::string title = trimmed(note.title);
    return title.empty() ? "A reminder without words" : firstCharacters(title, longestTask);
}

std::string shortWhen(Instant moment, Instant now, const Calendar& calendar)
{
    return ReminderWords::short_(moment, now, calendar, calendar.locale());
}

/// The same for the same reminders, so that a program that is started anew shows no second one.
std::string summaryKey(const std::vector<DueReminder>& reminders)
{
    std::string names;
    for (const DueReminder& reminder : reminders)
        names += reminder.note.id + "@" + std::to_string(reminder.occurrence.time_since_epoch().count()) + " ";
    return "summary " + std::to_string(std::hash<std::string>()(names));
}

void offerChoices(ReminderNotice& notice, const char* doneLabel, Instant now, const Calendar& calendar)
{
    notice.choices = ReminderChoices::later(now, calendar, calendar.locale());
    notice.notice.actions.push_back({ReminderNotice::doneKey, doneLabel});
    for (const ReminderChoice& choice : notice.choices)
        notice.notice.actions.push_back({choice.title, choice.title});
}

} // namespace

ReminderNotice ReminderNotice::ringing(const DueReminder& reminder, Instant now, const Calendar& calendar)
{
    ReminderNotice result;
    result.reminders = {reminder};
    const auto mark = AlarmMark::of(reminder.note);
    const bool isTimer = mark && mark->isTimer();
    const std::string task = taskOf(reminder.note);
    result.notice.key = reminder.note.id;
    result.notice.title = task;
    result.notice.body = (isTimer ? "Over " : "Set for ") + shortWhen(reminder.occurrence, now, calendar);
    result.notice.isUrgent = true;
    result.notice.actions = {{AlarmRinging::stopKey, "Stop"}, {AlarmRinging::snoozeKey, "Snooze for 10 minutes"}};
    const std::string name = isTimer || task == "Alarm" ? task : "Alarm: " + task;
    result.announcement = name + (isTimer ? " is over." : ".") + " Say \"stop\" or \"snooze\".";
    return result;
}

ReminderNotice ReminderNotice::single(const DueReminder& reminder, Instant now, const Calendar& calendar)
{
    constexpr std::chrono::minutes worthTelling{2};
    ReminderNotice result;
    result.reminders = {reminder};
    const bool isMissed = AlarmRinging::isAlarm(reminder.note);
    const std::string task = taskOf(reminder.note);
    result.notice.key = reminder.note.id;
    result.notice.title = (isMissed ? "Missed: " : "") + task;
    result.notice.body = "Due " + shortWhen(reminder.occurrence, now, calendar);
    if (const std::string details = trimmed(reminder.note.body); !details.empty())
        result.notice.body += "\n" + firstCharacters(details, longestBody);
    result.announcement = (isMissed ? "You missed an alarm: " : "Reminder: ") + task + ".";
    if (isMissed || now - reminder.occurrence > worthTelling)
        result.announcement += " It was due " + shortWhen(reminder.occurrence, now, calendar) + ".";
    offerChoices(result, "Done", now, calendar);
    return result;
}

ReminderNotice ReminderNotice::summary(const std::vector<DueReminder>& reminders, Instant now, const Calendar& calendar)
{
    ReminderNotice result;
    result.reminders = reminders;
    const std::size_t named = std::min(reminders.size(), namedInSummary);
    result.notice.key = summaryKey(reminders);
    result.notice.title = std::to_string(reminders.size()) + " reminders came due";
    result.announcement = result.notice.title + ":";
    for (std::size_t index = 0; index < named; ++index) {
        const std::string task = taskOf(reminders[index].note);
        result.notice.body += (index > 0 ? "\n" : "") + shortWhen(reminders[index].occurrence, now, calendar);
        result.notice.body += "  " + task;
        result.announcement += (index > 0 ? "; " : " ") + task;
    }
    if (const std::size_t more = reminders.size() - named; more > 0) {
        result.notice.body += "\n… and " + std::to_string(more) + " more";
        result.announcement += "; and " + std::to_string(more) + " more";
    }
    result.announcement += ".";
    offerChoices(result, "All done", now, calendar);
    return result;
}

std::optional<Instant> ReminderNotice::putOffUntil(
    const std::string& actionKey, Instant now, const Calendar& calendar) const
{
    const auto hasKey = [&](const ReminderChoice& choice) { return choice.title == actionKey; };
    const auto shown = std::find_if(choices.begin(), choices.end(), hasKey);
    if (shown == choices.end())
        return std::nullopt;
    const auto offered = ReminderChoices::later(now, calendar, calendar.locale());
    const auto current = std::find_if(offered.begin(), offered.end(), hasKey);
    if (current != offered.end())
        return current->date;
    return std::max(shown->date, now + std::chrono::minutes(10));
}

} // namespace quorvell
