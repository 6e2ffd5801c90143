#include "LiveService/replies/ReminderReply.h"

#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/replies/TaskWords.h"
#include "QuorvellCore/text/LowerCase.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace quorvell {

namespace {

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
    if (status == "needs_time")
        return "When should I " + remindYou(taskOf(result, userWords)) + "?";
    if (status == "needs_task")
        return "What do you want to be reminded of?";
    return setReply(result, taskOf(result, userWords));
}

} // namespace quorvell
