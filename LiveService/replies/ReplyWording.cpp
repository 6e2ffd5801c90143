#include "LiveService/replies/ReplyWording.h"

#include "LiveService/replies/NoteReply.h"
#include "LiveService/replies/ReminderReply.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

std::string textOf(const std::optional<Json>& object, const char* key)
{
    return object ? readString(*object, key).value_or("") : "";
}

/// The tool's own sentence, which says what to do next.
std::string errorReply(const std::string& sentence)
{
    const std::string text = withUpperCaseFirst(trimmed(sentence));
    if (text.empty())
        return "That did not work.";
    return std::string_view(".!?").find(text.back()) == std::string_view::npos ? text + "." : text;
}

} // namespace

std::string ReplyWording::reply(
    const ToolRequest& call, std::string_view resultText, const ConversationMemory& memory, std::string_view now)
{
    const auto result = parseJson(resultText);
    if (!result || !result->is_object())
        return "That did not work.";
    if (const auto error = readString(*result, "error"))
        return errorReply(*error);
    const auto arguments = parseJson(call.arguments);
    if (call.name == "set_reminder") {
        return ReminderReply::reply(*result, memory.request.empty() ? textOf(arguments, "text") : memory.request);
    }
    if (call.name == "keep_note")
        return NoteReply::kept(*result);
    if (call.name == "find_in_notebook")
        return memory.purpose == ConversationMemory::SearchPurpose::listReminders
            ? NoteReply::reminders(*result, now)
            : NoteReply::found(*result, textOf(arguments, "query"), memory.purpose);
    if (call.name == "read_note")
        return NoteReply::read(*result);
    return "Done.";
}

} // namespace quorvell
