// SPDX-License-Identifier: MIT
#include "Quorvell/tools/ReminderAnswers.h"

#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/reminders/ReminderRepeat.h"
#include "QuorvellCore/reminders/ReminderState.h"
#include "QuorvellCore/reminders/ReminderTrigger.h"
#include "QuorvellCore/reminders/ReminderWords.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr std::size_t mostListed = 200;
constexpr const char* onReturn = "when you are back at the computer";

bool waitsForReturn(const Note& note)
{
    return note.trigger == storedText(ReminderTrigger::backAtMac);
}

void addRepeat(Json& result, const ReminderRequest& request)
{
    if (request.repeatRule)
        result["repeat"] = request.repeatRule->stored();
}

std::optional<ReminderRepeat> repeatOf(const Note& note)
{
    return note.repeatRule ? ReminderRepeat::fromStored(*note.repeatRule) : std::nullopt;
}

} // namespace

std::string ReminderAnswers::date(Instant moment, bool hasTime) const
{
    return (hasTime ? DateParts::from(moment, m_calendar) : DateParts::fromDay(moment, m_calendar)).text();
}

std::string ReminderAnswers::when(Instant moment) const
{
    return ReminderWords::spoken(moment, m_now, m_calendar, m_calendar.locale());
}

Json ReminderAnswers::set(const Note& note, bool hasTime) const
{
    Json result = {{"status", "set"}, {"id", note.id}, {"task", note.title}};
    if (waitsForReturn(note)) {
        result["when"] = onReturn;
        result["when_back"] = true;
        return result;
    }
    const Instant moment = note.remindAt.value_or(m_now);
    result["date"] = date(moment, hasTime);
    result["when"] = when(moment);
    result["has_time"] = hasTime;
    if (const auto repeat = repeatOf(note)) {
        result["repeat"] = repeat->stored();
        result["repeat_words"] = repeat->spoken(m_calendar.locale());
    }
    return result;
}

Json ReminderAnswers::whichTime(const ReminderRequest& request) const
{
    Json choices = Json::array();
    for (const Instant choice : request.choices)
        choices.push_back({{"date", date(choice, true)}, {"when", when(choice)}});
    Json result = {{"status", "which_time"}, {"task", request.task}, {"choices", std::move(choices)}};
    addRepeat(result, request);
    result["message"] = "Nothing is set yet. Ask the user which of the choices they mean, then call set_reminder again "
                        "with task, the date of that choice, and repeat if it is given here.";
    return result;
}

Json ReminderAnswers::needsTime(const ReminderRequest& request) const
{
    const bool isPast = request.verdict == ReminderRequest::Verdict::pastTime;
    Json result = {{"status", "needs_time"}, {"task", request.task}};
    addRepeat(result, request);
    if (isPast) {
        result["past"] = true;
        result["when"] = when(request.date);
    }
    result["message"] = isPast
        ? "Nothing is set: the time they named is already past. Say so, ask when instead, then call set_reminder again."
        : "Nothing is set yet: no day or hour was understood, or not all of it. Ask the user when, then call "
          "set_reminder again with the task and the time in one text.";
    return result;
}

Json ReminderAnswers::needsTask(const ReminderRequest& request) const
{
    Json result = {
        {"status", "needs_task"}, {"date", date(request.date, request.hasTime)}, {"when", when(request.date)}};
    addRepeat(result, request);
    result["message"] = "Nothing is set yet. Ask the user what they want to be reminded of, then call set_reminder "
                        "again with task, date, and repeat if it is given here.";
    return result;
}

Json ReminderAnswers::entry(const Note& note) const
{
    Json entry = {{"id", note.id}, {"task", note.title}};
    if (waitsForReturn(note) || !note.remindAt) {
        entry["when"] = onReturn;
        entry["when_back"] = true;
    } else {
        entry["date"] = date(*note.remindAt, true);
        entry["when"] = when(*note.remindAt);
    }
    if (ReminderState::isDue(note, m_now))
        entry["overdue"] = true;
    if (const auto repeat = repeatOf(note))
        entry["repeat_words"] = repeat->spoken(m_calendar.locale());
    if (isUntrusted(note.origin))
        entry["untrusted"] = true;
    return entry;
}

Json ReminderAnswers::list(const std::vector<Note>& pending) const
{
    Json entries = Json::array();
    for (const Note& note : pending)
        if (entries.size() < mostListed)
            entries.push_back(entry(note));
    return {{"status", "reminders"}, {"count", pending.size()}, {"reminders", std::move(entries)}};
}

Json ReminderAnswers::whichReminder(const std::vector<Note>& candidates) const
{
    Json result = list(candidates);
    result["status"] = "which_reminder";
    result["message"] = "Nothing is changed yet: several reminders fit. Ask the user which one, then call set_reminder "
                        "again with its id.";
    return result;
}

Json ReminderAnswers::deferred(const Note& note) const
{
    const Instant moment = note.remindAt.value_or(m_now);
    return {{"status", "deferred"}, {"id", note.id}, {"task", note.title}, {"date", date(moment, true)},
        {"when", when(moment)}};
}

Json ReminderAnswers::done(const Note& note) const
{
    Json result = {{"status", "done"}, {"id", note.id}, {"task", note.title}};
    if (ReminderState::isPending(note) && note.remindAt)
        result["next"] = when(*note.remindAt);
    return result;
}

} // namespace quorvell
