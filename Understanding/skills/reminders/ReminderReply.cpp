// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderReply.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/TaskWords.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t longestNames = 120; ///< Bytes of a list that one can still follow.

TaskWords taskOf(const Json& result, std::string_view userWords)
{
    return TaskWords::of(readString(result, "task").value_or(""), userWords);
}

std::string remindYou(const TaskWords& task)
{
    return task.text.empty() ? "remind you" : "remind you " + task.told();
}

/// "every Monday"; empty for what comes once.
std::string oftenIn(const Json& object)
{
    const std::string words = readString(object, "repeat_words").value_or("");
    return lowerCased(words.substr(0, 1)) + words.substr(std::min<std::size_t>(words.size(), 1));
}

/// Nobody named the hour: it is the one at which such days begin.
bool takesUsualHour(const Json& result)
{
    const bool isOnReturn = readBool(result, "when_back").value_or(false);
    return !isOnReturn && !readBool(result, "has_time").value_or(true)
        && readString(result, "when").value_or("").find(" at ") != std::string::npos;
}

std::string setReply(const Json& result, const TaskWords& task)
{
    const std::string when = SpokenWhen::on(readString(result, "when").value_or(""));
    const std::string often = oftenIn(result);
    const std::string reply = "I will " + remindYou(task);
    if (often.empty())
        return reply + (when.empty() ? "" : " " + when) + (takesUsualHour(result) ? ", as you named no hour." : ".");
    return reply + " " + often + (when.empty() ? "" : ", starting " + when) + ".";
}

/// Whether a weekly one comes this time on another day than its own.
bool isOffItsDay(const Json& result)
{
    const auto rule = ReminderRepeat::fromStored(readString(result, "repeat").value_or(""));
    const auto date = ToolResults::dateIn(result, "date");
    const auto day = date ? Calendar::dayOf(date->year, date->month, date->day) : std::nullopt;
    return rule && day && rule->kind == ReminderRepeat::Kind::weekly
        && std::ranges::find(rule->weekdays, Calendar::weekday(*day)) == rule->weekdays.end();
}

/// One that repeats goes on to do so, at the new time of day.
std::string deferredReply(const Json& result, const TaskWords& task)
{
    const std::string often = oftenIn(result);
    const std::string when = SpokenWhen::on(readString(result, "when").value_or("later"));
    if (isOffItsDay(result))
        return "I will " + remindYou(task) + " this time " + when + ", and then again " + often + ".";
    return "I will " + remindYou(task) + " " + when + (often.empty() ? "" : ", and " + often) + ".";
}

struct Entry {
    std::string task;
    std::optional<DateParts> date;
    std::string when;
    bool isOverdue = false;
    std::string often;
};

std::vector<Entry> entriesOf(const Json& result)
{
    std::vector<Entry> entries;
    const Json* list = memberOf(result, "reminders");
    if (!list || !list->is_array())
        return entries;
    for (const Json& entry : *list)
        entries.push_back({trimmed(readString(entry, "task").value_or(""), ".;:,"), ToolResults::dateIn(entry, "date"),
            readString(entry, "when").value_or(""), readBool(entry, "overdue").value_or(false), oftenIn(entry)});
    return entries;
}

std::string whenOf(const Entry& entry, const LocalTime& around)
{
    if (entry.isOverdue)
        return "overdue";
    return SpokenWhen::on(entry.date ? SpokenWhen::dateSeenFrom(*entry.date, around) : entry.when);
}

std::string doneReply(const Json& result, const TaskWords& task)
{
    const std::string next = SpokenWhen::on(readString(result, "next").value_or(""));
    return "Done" + (task.text.empty() ? "" : ": " + task.text) + "."
        + (next.empty() ? "" : " I will remind you again " + next + ".");
}

std::string whichReminderReply(const Json& result)
{
    std::string names;
    for (const Entry& entry : entriesOf(result)) {
        names += (names.empty() ? "" : ", ") + entry.task;
        if (names.size() > longestNames)
            break;
    }
    return names.empty() ? "Which one do you mean?" : "Several fit: " + names + ". Which one do you mean?";
}

} // namespace

SettledTime ReminderReply::settled(const Json& result)
{
    const Json* understood = memberOf(result, "understood");
    if (!understood)
        return {};
    return {.rule = readString(*understood, "rule").value_or(""),
        .day = readString(*understood, "day").value_or(""),
        .clock = readString(*understood, "clock").value_or("")};
}

std::vector<TimeChoice> ReminderReply::choices(const Json& result)
{
    constexpr std::size_t most = 8;
    std::vector<TimeChoice> choices;
    const Json* list = memberOf(result, "choices");
    if (!list || !list->is_array())
        return choices;
    for (const Json& choice : *list) {
        if (const auto date = ToolResults::dateIn(choice, "date"); date && choices.size() < most)
            choices.push_back({*date, readString(choice, "when").value_or("")});
    }
    return choices;
}

std::string ReminderReply::reply(const ToolResult& result, std::string_view userWords)
{
    const Json& json = result.json();
    const TaskWords task = taskOf(json, userWords);
    const ToolStatus status = result.status();
    if (status == ToolStatus::whichTime)
        return ReminderQuestions::wordedChoices(choices(json));
    if (status == ToolStatus::needsTime)
        return (readBool(json, "past").value_or(false) ? "That time is already past. " : std::string())
            + ReminderQuestions::wordedDoubt(readString(json, "unclear").value_or(""), settled(json), remindYou(task));
    if (status == ToolStatus::whichOccurrences)
        return "I " + remindYou(task) + " " + oftenIn(json) + ". Only the next one, or all of them?";
    if (status == ToolStatus::whichReminder)
        return whichReminderReply(json);
    if (status == ToolStatus::done)
        return doneReply(json, task);
    if (status == ToolStatus::deferred)
        return deferredReply(json, task);
    return status == ToolStatus::needsTask ? "What do you want to be reminded of?" : setReply(json, task);
}

std::string ReminderReply::cancelled(const ToolResult& result, std::string_view userWords)
{
    const Json& json = result.json();
    const std::string remind = remindYou(taskOf(json, userWords));
    const std::string next = SpokenWhen::on(readString(json, "next").value_or(""));
    if (!next.empty())
        return "All right, I will not " + remind + " this time. I will remind you again " + next + ".";
    const bool isSeries = readBool(json, "ended").value_or(false);
    return "All right, I will not " + remind + (isSeries ? " any more" : "") + ". The note stays in your notebook.";
}

std::string ReminderReply::list(const Json& result, const RequestMemory& memory, const LocalTime& around)
{
    auto entries = entriesOf(result);
    std::erase_if(entries, [&](const Entry& entry) { return !memory.tellsOf({.start = entry.date}); });
    const std::string lead = memory.daysInWords().empty() ? "" : " " + memory.daysInWords();
    if (entries.empty())
        return "You have no reminders" + lead + ".";
    std::string reply = "You have "
        + (entries.size() == 1 ? std::string("one reminder") : std::to_string(entries.size()) + " reminders") + lead
        + ".";
    const std::size_t named = std::min(entries.size(), RequestMemory::mostTold);
    for (std::size_t index = 0; index < named; ++index) {
        const std::string when = whenOf(entries[index], around);
        const std::string& often = entries[index].often;
        reply +=
            " " + entries[index].task + (when.empty() ? "" : ", " + when) + (often.empty() ? "" : ", " + often) + ".";
    }
    return reply + (named < entries.size() ? " The others are in your notebook." : "");
}

std::string ReminderReply::whatWasDone(const ToolRequest& call, const ToolResult& result)
{
    const Json& json = result.json();
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const TaskWords task = taskOf(json, readString(arguments, "text").value_or(""));
    const std::string reminder = "reminder" + (task.text.empty() ? "" : " " + task.told());
    const std::string when = readString(json, "when").value_or("");
    const std::string often = oftenIn(json);
    if (result.status() == ToolStatus::set)
        return (memberOf(arguments, "id") ? "changed the " : "set a ") + reminder + (often.empty() ? "" : ", " + often)
            + (when.empty() ? "" : ", " + SpokenWhen::on(when));
    if (result.status() == ToolStatus::deferred)
        return "moved the " + reminder + (when.empty() ? "" : " to " + SpokenWhen::words(when));
    if (result.status() != ToolStatus::done)
        return {};
    return (memberOf(arguments, "cancel") ? "deleted the " : "ticked off the ") + reminder;
}

} // namespace quorvell
