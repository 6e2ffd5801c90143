// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindText.h"

#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

namespace {

std::string understood(const ReminderRequest& request, const std::string& when, const Calendar& calendar)
{
    std::string text = request.task + "\n" + when;
    if (!request.hasTime)
        text += " (no hour was given)";
    if (request.repeatRule)
        text += "\n" + request.repeatRule->spoken(calendar.locale());
    return text;
}

} // namespace

std::string remindText(const ReminderRequest& request, Instant now, const Calendar& calendar)
{
    const auto spoken = [&](Instant date) {
        return ReminderWords::spokenWithYear(date, now, calendar, calendar.locale());
    };
    switch (request.verdict) {
    case ReminderRequest::Verdict::ready:
        return understood(request, spoken(request.date), calendar);
    case ReminderRequest::Verdict::whichTime:
        break;
    case ReminderRequest::Verdict::needsTime:
        if (!request.unclear.empty())
            return "Nothing is set: \"" + request.unclear
                + "\" does not say one time. Name the day and the hour, as in "
                  "\"tomorrow at 5 pm call mum\".";
        return "Nothing is set: no day or hour was understood, or not all of it. Say when, as in \"tomorrow at 5 pm "
               "call "
               "mum\" or \"in 20 minutes check the oven\".";
    case ReminderRequest::Verdict::pastTime:
        return "Nothing is set: " + spoken(request.date) + " is already past. Name a time to come.";
    case ReminderRequest::Verdict::needsTask:
        return "Nothing is set: what to be reminded of " + std::string("is missing (") + spoken(request.date)
            + "). Say it too, as in \"tomorrow at 5 pm call mum\".";
    }
    std::string text = "Nothing is set, for the hour can mean";
    for (const Instant choice : request.choices)
        text += (choice == request.choices.front() ? " " : ", or ") + spoken(choice);
    return text + ". Say which, with am or pm, or by the 24-hour clock.";
}

} // namespace quorvell
