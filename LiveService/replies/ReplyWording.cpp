// SPDX-License-Identifier: MIT
#include "LiveService/replies/ReplyWording.h"

#include "LiveService/replies/AgendaReply.h"
#include "LiveService/replies/NoteReply.h"
#include "LiveService/replies/ReminderReply.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

std::string textOf(const std::optional<Json>& object, const char* key)
{
    return object ? readString(*object, key).value_or("") : "";
}

/// The tool's own sentences, without those that tell a model what to do next.
std::string errorReply(const std::string& sentences)
{
    static const Pattern forModels(
        "(?:^|(?<=[.!?])\\s*)(?:(?:Call|Ask|Tell|Give|Use|Say so|Look it up|Look the event up)\\b[^.!?]*"
        "|[^.!?]*[a-z]_[a-z][^.!?]*)(?:[.!?]|$)");
    const std::string text = withUpperCaseFirst(trimmed(forModels.replaceAll(sentences, "")));
    if (text.empty())
        return "That did not work.";
    return std::string_view(".!?").find(text.back()) == std::string_view::npos ? text + "." : text;
}

/// People tell what they have done whether a reminder asked them to or not.
std::string reminderError(const ToolRequest& call, const std::string& error)
{
    if (error.find("no pending reminder has these words") == std::string::npos)
        return errorReply(error);
    const auto arguments = parseJson(call.arguments);
    const bool isDone = arguments && memberOf(*arguments, "done");
    return isDone ? "All right. There was no reminder for that." : "I found no reminder like that.";
}

std::string requestOf(const ToolRequest& call, const RequestMemory& memory)
{
    return memory.request.empty() ? textOf(parseJson(call.arguments), "text") : memory.request;
}

std::string modeReply(const std::string& mode)
{
    if (mode == "guide")
        return "All right, I will show you and you do it.";
    return mode == "do" ? "All right, I will do it for you." : "All right, I will do the simple things myself.";
}

std::string otherReply(const ToolRequest& call, const Json& result, const std::string& status)
{
    const std::string question = readString(result, "question").value_or("");
    if (status == "needs_confirmation")
        return question.empty() ? "Should I really do that?" : question;
    if (status == "refused" && call.name == "set_mode")
        return "That stays as it is. You can switch it yourself at any time.";
    if (status == "refused")
        return errorReply(readString(result, "message").value_or("That is not possible."));
    if (status == "not_remembered")
        return "Okay, I will not remember that.";
    if (call.name == "remember_about_them")
        return status == "known" ? "I know that already." : "I will remember that.";
    if (call.name == "open_notebook")
        return "Here is your notebook.";
    return call.name == "set_mode" ? modeReply(textOf(parseJson(call.arguments), "mode")) : "Done.";
}

} // namespace

std::string ReplyWording::reply(const ToolRequest& call, std::string_view resultText, const RequestMemory& memory)
{
    const auto result = parseJson(resultText);
    if (!result || !result->is_object())
        return "That did not work.";
    if (const auto error = readString(*result, "error"))
        return call.name == "set_reminder" ? reminderError(call, *error) : errorReply(*error);
    const auto status = readString(*result, "status").value_or("");
    if (call.name == "set_reminder")
        return status == "reminders" ? ReminderReply::list(*result, memory)
                                     : ReminderReply::reply(*result, requestOf(call, memory));
    if (call.name == "keep_note")
        return NoteReply::kept(*result);
    if (call.name == "find_in_notebook")
        return NoteReply::found(*result, textOf(parseJson(call.arguments), "query"), memory.purpose);
    if (call.name == "read_note")
        return NoteReply::read(*result);
    for (const char* tool : {"whats_on", "find_free_time", "add_event", "change_event"}) {
        if (call.name == tool)
            return AgendaReply::reply(tool, *result, memory);
    }
    return otherReply(call, *result, status);
}

} // namespace quorvell
