// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderAnswers.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostListed = 200;
constexpr const char* onReturn = "when you are back at the computer";

bool waitsForReturn(const Note& note)
{
    return note.trigger == storedText(ReminderTrigger::backAtMac);
}

void addRepeat(ToolResult& result, const ReminderRequest& request)
{
    if (request.repeatRule)
        result.add("repeat", request.repeatRule->stored());
}

/// What was not understood of the time, and what was.
void addDoubt(ToolResult& result, const ReminderRequest& request)
{
    if (!request.unclear.empty())
        result.add("unclear", request.unclear);
    Json understood = Json::object();
    for (const auto& [name, words] : {std::pair("rule", &request.understood.rule), {"day", &request.understood.day},
             {"clock", &request.understood.clock}})
        if (!words->empty())
            understood[name] = *words;
    if (!understood.empty())
        result.add("understood", std::move(understood));
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
    return ReminderWords::spokenWithYear(moment, m_now, m_calendar, m_calendar.locale());
}

Json ReminderAnswers::ringPart(const Note& note) const
{
    const auto mark = AlarmMark::of(note);
    if (!mark)
        return Json::object();
    if (!mark->isTimer())
        return {{"kind", "alarm"}};
    Json part{{"kind", "timer"}, {"length_seconds", mark->length.count()}};
    const Instant end = note.remindAt.value_or(m_now);
    const auto left = mark->left.value_or(std::chrono::ceil<std::chrono::seconds>(end - m_now));
    part["remaining_seconds"] = std::max(left, std::chrono::seconds(0)).count();
    if (mark->isPaused())
        part["paused"] = true;
    return part;
}

ToolResult ReminderAnswers::withRepeat(ToolResult result, const Note& note) const
{
    if (const auto repeat = repeatOf(note))
        result.add("repeat", repeat->stored()).add("repeat_words", repeat->spoken(m_calendar.locale()));
    return result;
}

ToolResult ReminderAnswers::set(const Note& note, bool hasTime) const
{
    ToolResult result(ToolStatus::set);
    result.add("id", note.id).add("task", note.title).addAll(ringPart(note));
    if (waitsForReturn(note))
        return result.add("when", onReturn).add("when_back", true);
    if (!note.remindAt && AlarmMark::of(note))
        return result; // A timer that is paused has no time.
    const Instant moment = note.remindAt.value_or(m_now);
    result.add("date", date(moment, hasTime)).add("when", when(moment)).add("has_time", hasTime);
    return withRepeat(std::move(result), note);
}

ToolResult ReminderAnswers::whichOccurrences(const Note& note) const
{
    ToolResult result(ToolStatus::whichOccurrences);
    result.add("id", note.id).add("task", note.title).addAll(ringPart(note));
    if (note.remindAt)
        result.add("when", when(*note.remindAt));
    return withRepeat(std::move(result), note)
        .advise("Nothing is changed yet: it repeats. Ask the user whether only the next one or all of them, then call "
                "set_reminder again with cancel, its id, and series.");
}

ToolResult ReminderAnswers::ended(const Note& note) const
{
    return ToolResult(ToolStatus::done).add("id", note.id).add("task", note.title).add("ended", true);
}

ToolResult ReminderAnswers::whichTime(const ReminderRequest& request) const
{
    Json choices = Json::array();
    for (const Instant choice : request.choices)
        choices.push_back({{"date", date(choice, true)}, {"when", when(choice)}});
    ToolResult result(ToolStatus::whichTime);
    result.add("task", request.task).add("choices", std::move(choices));
    addRepeat(result, request);
    return result.advise(
        "Nothing is set yet. Ask the user which of the choices they mean, then call set_reminder again "
        "with task, the date of that choice, and repeat if it is given here.");
}

ToolResult ReminderAnswers::needsTime(const ReminderRequest& request) const
{
    const bool isPast = request.verdict == ReminderRequest::Verdict::pastTime;
    ToolResult result(ToolStatus::needsTime);
    result.add("task", request.task);
    addRepeat(result, request);
    if (isPast)
        result.add("past", true).add("when", when(request.date));
    addDoubt(result, request);
    return result.advise(isPast
            ? "Nothing is set: the time they named is already past. Say so, ask when instead, then call set_reminder "
              "again."
            : "Nothing is set yet: no day or hour was understood, or not all of it. Ask the user when, or only for "
              "what is "
              "unclear; then call set_reminder again with the task and the whole time in one text, also what is given "
              "here as understood.");
}

ToolResult ReminderAnswers::needsTask(const ReminderRequest& request) const
{
    ToolResult result(ToolStatus::needsTask);
    result.add("date", date(request.date, request.hasTime)).add("when", when(request.date));
    addRepeat(result, request);
    return result.advise(
        "Nothing is set yet. Ask the user what they want to be reminded of, then call set_reminder again "
        "with task, date, and repeat if it is given here.");
}

Json ReminderAnswers::entry(const Note& note) const
{
    Json entry = {{"id", note.id}, {"task", note.title}};
    entry.update(ringPart(note));
    if (waitsForReturn(note)) {
        entry["when"] = onReturn;
        entry["when_back"] = true;
    } else if (note.remindAt) {
        entry["date"] = date(*note.remindAt, true);
        entry["when"] = when(*note.remindAt);
    }
    if (ReminderState::isDue(note, m_now))
        entry["overdue"] = true;
    if (const auto repeat = repeatOf(note)) {
        entry["repeat_words"] = repeat->spoken(m_calendar.locale());
        if (AlarmMark::of(note)) // Which days it rings on is asked more often than of a reminder.
            entry["repeat"] = repeat->stored();
    }
    if (isUntrusted(note.origin))
        entry["untrusted"] = true;
    return entry;
}

ToolResult ReminderAnswers::list(const std::vector<Note>& pending) const
{
    Json entries = Json::array();
    const auto newest = std::ranges::max_element(pending, {}, &Note::created);
    const bool isClear = pending.size() > 1 && std::ranges::count(pending, newest->created, &Note::created) == 1;
    for (auto note = pending.begin(); note != pending.end() && entries.size() < mostListed; ++note) {
        entries.push_back(entry(*note));
        if (note == newest && isClear && AlarmMark::of(*note))
            entries.back()["set_last"] = true; // "The last timer" is told from the others by that alone.
    }
    return ToolResult(ToolStatus::reminders).add("count", pending.size()).add("reminders", std::move(entries));
}

ToolResult ReminderAnswers::whichReminder(const std::vector<Note>& candidates) const
{
    ToolResult result = list(candidates);
    result.add("status", storedText(ToolStatus::whichReminder));
    return result.advise(
        "Nothing is changed yet: several reminders fit. Ask the user which one, then call set_reminder "
        "again with its id.");
}

ToolResult ReminderAnswers::deferred(const Note& note) const
{
    const auto mark = AlarmMark::of(note);
    const Instant moment = mark && mark->snoozedUntil ? *mark->snoozedUntil : note.remindAt.value_or(m_now);
    ToolResult result(ToolStatus::deferred);
    result.add("id", note.id)
        .add("task", note.title)
        .addAll(ringPart(note))
        .add("date", date(moment, true))
        .add("when", when(moment));
    return withRepeat(std::move(result), note);
}

ToolResult ReminderAnswers::done(const Note& note) const
{
    ToolResult result(ToolStatus::done);
    result.add("id", note.id).add("task", note.title).addAll(ringPart(note));
    if (ReminderState::isPending(note) && note.remindAt)
        result.add("next", when(*note.remindAt));
    return result;
}

} // namespace quorvell
