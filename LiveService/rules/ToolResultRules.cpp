// SPDX-License-Identifier: MIT
#include "LiveService/rules/ToolResultRules.h"

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr std::size_t mostChoices = 8;
constexpr std::size_t mostThings = 50;

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

using Kind = FoundThing::Kind;

FoundThing readThing(const Json& item, Kind kind, const char* title, const char* start)
{
    return {.id = readString(item, "id").value_or(""),
        .title = readString(item, title).value_or(""),
        .start = readString(item, start).value_or(""),
        .end = readString(item, "end").value_or(""),
        .kind = kind,
        .repeats = readBool(item, "repeats").value_or(false)};
}

FoundThing readEvent(const Json& item)
{
    return readThing(item, Kind::event, "title", "start");
}

/// The first of a list, each read by `read`. What has no id cannot be pointed at.
template <typename Read> std::vector<FoundThing> thingsIn(std::string_view text, const char* key, Read read)
{
    std::vector<FoundThing> things;
    const auto result = parseJson(text);
    const Json* list = result ? memberOf(*result, key) : nullptr;
    if (!list || !list->is_array())
        return things;
    for (const Json& item : *list) {
        FoundThing thing = read(item);
        if (!thing.id.empty() && things.size() < mostThings)
            things.push_back(std::move(thing));
    }
    return things;
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

std::vector<FoundThing> ToolResultRules::notesIn(std::string_view text)
{
    return thingsIn(text, "notes", [](const Json& item) { return readThing(item, Kind::note, "title", "date"); });
}

std::vector<FoundThing> ToolResultRules::agendaIn(std::string_view text)
{
    return thingsIn(text, "items", [](const Json& item) {
        FoundThing thing = readEvent(item);
        thing.kind = readString(item, "kind") == "event" ? Kind::event : Kind::reminder;
        return thing;
    });
}

std::vector<FoundThing> ToolResultRules::remindersIn(std::string_view text)
{
    return thingsIn(
        text, "reminders", [](const Json& item) { return readThing(item, Kind::reminder, "task", "date"); });
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

FoundThing ToolResultRules::eventIn(std::string_view text)
{
    const auto result = parseJson(text);
    const auto status = result ? readString(*result, "status") : std::nullopt;
    return status == "added" || status == "changed" ? readEvent(*result) : FoundThing();
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

PendingQuestion ToolResultRules::questionOf(const ToolRequest& call, std::string_view text, std::string_view question)
{
    const auto result = parseJson(text);
    const auto status = result ? readString(*result, "status") : std::nullopt;
    const auto kind = status == "needs_confirmation" ? PendingQuestion::Kind::confirm
        : status == "which_reminder"                 ? PendingQuestion::Kind::whichReminder
                                                     : PendingQuestion::Kind::none;
    if (kind == PendingQuestion::Kind::none)
        return {};
    return {.kind = kind, .question = std::string(question), .tool = call.name, .arguments = call.arguments};
}

} // namespace quorvell
