#include "LiveService/rules/ToolResultRules.h"

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr std::size_t mostChoices = 8;
constexpr std::size_t mostNotes = 50;

PendingQuestion::Kind kindOf(const Json& result)
{
    const auto status = readString(result, "status");
    if (status == "which_time")
        return PendingQuestion::Kind::whichTime;
    if (status == "needs_time")
        return PendingQuestion::Kind::reminderTime;
    if (status == "needs_task")
        return PendingQuestion::Kind::reminderTask;
    return PendingQuestion::Kind::none;
}

std::vector<TimeChoice> choicesIn(const Json& result)
{
    std::vector<TimeChoice> choices;
    const Json* list = memberOf(result, "choices");
    if (!list || !list->is_array())
        return choices;
    for (const Json& choice : *list) {
        if (const auto date = readString(choice, "date"); date && choices.size() < mostChoices)
            choices.push_back({*date, readString(choice, "when").value_or("")});
    }
    return choices;
}

FoundEvent readEvent(const Json& item)
{
    return {readString(item, "id").value_or(""), readString(item, "title").value_or(""),
        readString(item, "start").value_or(""), readString(item, "end").value_or("")};
}

} // namespace

PendingQuestion ToolResultRules::questionIn(const ToolRequest& call, std::string_view text, std::string_view question)
{
    const auto result = parseJson(text);
    const auto kind = result ? kindOf(*result) : PendingQuestion::Kind::none;
    if (kind == PendingQuestion::Kind::none)
        return {};
    const auto arguments = parseJson(call.arguments);
    const bool putsOff = arguments && memberOf(*arguments, "later");
    return {.kind = kind,
        .question = std::string(question),
        .task = readString(*result, "task").value_or(""),
        .date = readString(*result, "date").value_or(""),
        .repeat = readString(*result, "repeat").value_or(""),
        .choices = choicesIn(*result),
        .tool = putsOff ? call.name : std::string(),
        .arguments = putsOff ? call.arguments : std::string()};
}

std::vector<FoundNote> ToolResultRules::notesIn(std::string_view text)
{
    std::vector<FoundNote> notes;
    const auto result = parseJson(text);
    const Json* list = result ? memberOf(*result, "notes") : nullptr;
    if (!list || !list->is_array())
        return notes;
    for (const Json& note : *list) {
        if (const auto id = readString(note, "id"); id && notes.size() < mostNotes)
            notes.push_back({*id, readString(note, "title").value_or("")});
    }
    return notes;
}

std::vector<FoundEvent> ToolResultRules::eventsIn(std::string_view text)
{
    std::vector<FoundEvent> events;
    const auto result = parseJson(text);
    const Json* list = result ? memberOf(*result, "items") : nullptr;
    if (!list || !list->is_array())
        return events;
    for (const Json& item : *list) {
        FoundEvent event = readEvent(item);
        if (!event.id.empty() && readString(item, "kind") == "event" && events.size() < mostNotes)
            events.push_back(std::move(event));
    }
    return events;
}

ToolResultRules::Reminder ToolResultRules::reminderIn(std::string_view text)
{
    const auto result = parseJson(text);
    if (!result)
        return {};
    const Json* list = memberOf(*result, "reminders");
    if (list && list->is_array() && list->size() != 1)
        return {};
    const Json& reminder = list && list->is_array() ? list->front() : *result;
    return {readString(reminder, "id").value_or(""), readString(reminder, "date").value_or("")};
}

FoundEvent ToolResultRules::eventIn(std::string_view text)
{
    const auto result = parseJson(text);
    const auto status = result ? readString(*result, "status") : std::nullopt;
    return status == "added" || status == "changed" ? readEvent(*result) : FoundEvent();
}

bool ToolResultRules::endsReminder(std::string_view text)
{
    const auto result = parseJson(text);
    return result && readString(*result, "status") == "done" && !memberOf(*result, "next");
}

bool ToolResultRules::foundNothingDue(const ToolRequest& call, std::string_view text)
{
    const auto arguments = parseJson(call.arguments);
    const auto result = parseJson(text);
    if (call.name != "set_reminder" || !arguments || !result || !readString(*result, "error"))
        return false;
    const bool changes = memberOf(*arguments, "done") || memberOf(*arguments, "later");
    return changes && !memberOf(*arguments, "id") && !memberOf(*arguments, "task");
}

PendingQuestion ToolResultRules::questionOf(
    const ToolRequest& call, std::string_view text, std::string_view question, std::vector<FoundNote>& found)
{
    const auto result = parseJson(text);
    const auto status = result ? readString(*result, "status") : std::nullopt;
    if (status == "needs_confirmation")
        return {.kind = PendingQuestion::Kind::confirm,
            .question = std::string(question),
            .tool = call.name,
            .arguments = call.arguments};
    const Json* list = status == "which_reminder" ? memberOf(*result, "reminders") : nullptr;
    if (!list || !list->is_array())
        return {};
    found.clear();
    for (const Json& reminder : *list) {
        if (const auto id = readString(reminder, "id"); id && found.size() < mostNotes)
            found.push_back({*id, readString(reminder, "task").value_or("")});
    }
    return {.kind = PendingQuestion::Kind::whichReminder,
        .question = std::string(question),
        .tool = call.name,
        .arguments = call.arguments};
}

} // namespace quorvell
