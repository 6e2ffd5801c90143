// SPDX-License-Identifier: MIT
#include "LiveService/replies/ReminderReply.h"

#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/replies/TaskWords.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <nlohmann/json.hpp>

#include <algorithm>
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
    return task.text.empty() ? "remind you" : "remind you " + task.link + " " + task.text;
}

std::string setReply(const Json& result, const TaskWords& task)
{
    const std::string when = SpokenWhen::on(readString(result, "when").value_or(""));
    const auto repeat = readString(result, "repeat_words");
    std::string reply = "I will " + remindYou(task);
    if (!repeat)
        return reply + (when.empty() ? "" : " " + when) + ".";
    reply += " " + lowerCased(repeat->substr(0, 1)) + repeat->substr(1);
    return reply + (when.empty() ? "" : ", starting " + when) + ".";
}

struct Choice {
    std::string date;
    std::string when;
};

std::vector<Choice> choicesOf(const Json& result)
{
    std::vector<Choice> choices;
    const Json* list = memberOf(result, "choices");
    if (!list || !list->is_array())
        return choices;
    for (const Json& choice : *list)
        choices.push_back({readString(choice, "date").value_or(""), readString(choice, "when").value_or("")});
    return choices;
}

bool isOnOneDay(const std::vector<Choice>& choices)
{
    const auto day = [](const Choice& choice) { return choice.date.substr(0, choice.date.find(' ')); };
    for (const Choice& choice : choices) {
        if (day(choice) != day(choices.front()) || SpokenWhen::timeOfDay(choice.date).empty())
            return false;
    }
    return true;
}

struct Entry {
    std::string task;
    std::string date;
    std::string when;
    bool isOverdue = false;
};

std::vector<Entry> entriesOf(const Json& result)
{
    std::vector<Entry> entries;
    const Json* list = memberOf(result, "reminders");
    if (!list || !list->is_array())
        return entries;
    for (const Json& entry : *list)
        entries.push_back(
            {trimmed(readString(entry, "task").value_or(""), ".;:,"), readString(entry, "date").value_or(""),
                readString(entry, "when").value_or(""), readBool(entry, "overdue").value_or(false)});
    return entries;
}

std::string whenOf(const Entry& entry)
{
    if (entry.isOverdue)
        return "overdue";
    const std::string when = SpokenWhen::fromDate(entry.date);
    return SpokenWhen::on(when.empty() ? entry.when : when);
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

std::string whichTimeReply(const Json& result)
{
    const auto choices = choicesOf(result);
    if (choices.empty())
        return "At what time do you mean?";
    const bool oneDay = isOnOneDay(choices);
    std::string reply = "Do you mean ";
    for (std::size_t index = 0; index < choices.size(); ++index) {
        if (index > 0)
            reply += index + 1 < choices.size() ? ", " : oneDay ? " or " : ", or ";
        reply += oneDay ? SpokenWhen::timeOfDay(choices[index].date) : SpokenWhen::words(choices[index].when);
    }
    return reply + "?";
}

} // namespace

std::string ReminderReply::reply(const Json& result, std::string_view userWords)
{
    const auto status = readString(result, "status");
    if (status == "which_time")
        return whichTimeReply(result);
    const TaskWords task = taskOf(result, userWords);
    if (status == "needs_time")
        return (readBool(result, "past").value_or(false) ? "That time is already past. " : std::string())
            + "When should I " + remindYou(task) + "?";
    if (status == "which_reminder")
        return whichReminderReply(result);
    if (status == "done") {
        const std::string next = SpokenWhen::on(readString(result, "next").value_or(""));
        return "Done" + (task.text.empty() ? "" : ": " + task.text) + "."
            + (next.empty() ? "" : " I will remind you again " + next + ".");
    }
    if (status == "deferred")
        return "I will " + remindYou(task) + " " + SpokenWhen::on(readString(result, "when").value_or("later")) + ".";
    if (status == "needs_task")
        return "What do you want to be reminded of?";
    return setReply(result, taskOf(result, userWords));
}

std::string ReminderReply::list(const Json& result, const RequestMemory& memory)
{
    auto entries = entriesOf(result);
    std::erase_if(entries, [&](const Entry& entry) { return !memory.tellsOf(entry.date); });
    const std::string lead = memory.days.empty() ? "" : " " + memory.days;
    if (entries.empty())
        return "You have no reminders" + lead + ".";
    std::string reply = "You have "
        + (entries.size() == 1 ? std::string("one reminder") : std::to_string(entries.size()) + " reminders") + lead
        + ".";
    const std::size_t named = std::min(entries.size(), RequestMemory::mostTold);
    for (std::size_t index = 0; index < named; ++index) {
        const std::string when = whenOf(entries[index]);
        reply += " " + entries[index].task + (when.empty() ? "" : ", " + when) + ".";
    }
    return reply + (named < entries.size() ? " The others are in your notebook." : "");
}

} // namespace quorvell
