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

} // namespace

PendingQuestion ToolResultRules::questionIn(std::string_view text, std::string_view question)
{
    const auto result = parseJson(text);
    const auto kind = result ? kindOf(*result) : PendingQuestion::Kind::none;
    if (kind == PendingQuestion::Kind::none)
        return {};
    return {.kind = kind,
        .question = std::string(question),
        .task = readString(*result, "task").value_or(""),
        .date = readString(*result, "date").value_or(""),
        .repeat = readString(*result, "repeat").value_or(""),
        .choices = choicesIn(*result)};
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

} // namespace quorvell
