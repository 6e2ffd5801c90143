#include "LiveService/replies/ReminderReply.h"

#include "LiveService/replies/SpokenWhen.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace quorvell {

namespace {

constexpr auto caseless = Pattern::Case::insensitive;

struct Task {
    std::string text;
    std::string link; ///< "to", "about" or "that".
};

/// How the user put the task, read from what stands before its first words.
std::string linkFor(const std::string& lowerTask, const std::string& lowerWords)
{
    static const Pattern thing(
        "^(?:the|my|our|your|his|her|their|a|an|this|that|these|those|mum's|mom's|dad's|all|some|\\d+)\\b|^\\S+'s\\b",
        caseless);
    const std::size_t place = lowerWords.find(lowerTask.substr(0, lowerTask.find(' ')));
    const std::string before = place == std::string::npos ? "" : trimmed(lowerWords.substr(0, place));
    if (before.ends_with(" to") || before == "to")
        return "to";
    if (before.ends_with(" that"))
        return "that";
    if (before.ends_with(" about") || before.ends_with(" for") || before.ends_with(" of"))
        return "about";
    return thing.find(lowerTask) ? "about" : "to";
}

/// The task as the middle of a sentence: a first letter that the user did not write in upper case is lowered.
Task taskOf(const Json& result, std::string_view userWords)
{
    std::string text = trimmed(readString(result, "task").value_or(""), ".;:,");
    if (text.empty())
        return {};
    const std::string lower = lowerCased(text);
    const std::string words(userWords);
    const std::string firstWord = text.substr(0, text.find(' '));
    const bool wroteUpperCase = words.find(firstWord) != std::string::npos;
    const bool isOneWordOfCapitals = firstWord.size() > 1 && lowerCased(firstWord.substr(1)) != firstWord.substr(1);
    if (!wroteUpperCase && !isOneWordOfCapitals && firstWord != "I")
        text = lower.substr(0, lower.size() - lowerCased(text.substr(1)).size()) + text.substr(1);
    return {text, linkFor(lower, lowerCased(words))};
}

std::string remindYou(const Task& task)
{
    return task.text.empty() ? "remind you" : "remind you " + task.link + " " + task.text;
}

std::string setReply(const Json& result, const Task& task)
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
        return "What should I remind you about?";
    return setReply(result, taskOf(result, userWords));
}

} // namespace quorvell
