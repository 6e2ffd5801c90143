// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/ToolResults.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <nlohmann/json.hpp>

#include <string_view>
#include <utility>

namespace quorvell {

const QuestionKind ToolResults::confirmation{}; // A clear yes is looked for before; anything else is none.

std::optional<DateParts> ToolResults::dateIn(const Json& item, const char* key)
{
    return DateParts::parse(readString(item, key).value_or(""));
}

FoundThing ToolResults::thing(const Json& item, const ThingForm& form)
{
    return {.id = readString(item, "id").value_or(""),
        .title = readString(item, form.title).value_or(""),
        .start = dateIn(item, form.start),
        .end = dateIn(item, "end"),
        .skill = form.skill,
        .repeats = readBool(item, "repeats").value_or(false) || memberOf(item, "repeat_words")};
}

std::vector<FoundThing> ToolResults::things(const Json& result, const char* key, const ThingForm& form)
{
    constexpr std::size_t most = 50;
    std::vector<FoundThing> found;
    const Json* list = memberOf(result, key);
    if (!list || !list->is_array())
        return found;
    for (const Json& item : *list) {
        FoundThing next = thing(item, form);
        if (!next.id.empty() && found.size() < most)
            found.push_back(std::move(next));
    }
    return found;
}

std::string ToolResults::forUser(const std::string& sentences)
{
    static const Pattern forModels(
        "(?:^|(?<=[.!?])\\s*)(?:(?:Call|Ask|Tell|Give|Use|Say so|Look it up|Look the event up)\\b[^.!?]*"
        "|[^.!?]*[a-z]_[a-z][^.!?]*)(?:[.!?]|$)");
    const std::string text = withUpperCaseFirst(trimmed(forModels.replaceAll(sentences, "")));
    if (text.empty())
        return "That did not work.";
    return std::string_view(".!?").find(text.back()) == std::string_view::npos ? text + "." : text;
}

std::optional<std::string> ToolResults::failure(const ToolResult& result)
{
    return result.isFailure() ? std::optional(forUser(result.wordsForModel())) : std::nullopt;
}

RuleStep ToolResults::say(std::string text, RequestMemory memory)
{
    memory.lastReply = text;
    return {std::move(text), std::move(memory)};
}

std::optional<RuleStep> ToolResults::confirming(
    const ToolRequest& call, const ToolResult& result, std::string_view usual, const RequestMemory& memory)
{
    if (result.status() != ToolStatus::needsConfirmation)
        return std::nullopt;
    std::string question = result.wordsForUser();
    return RuleStep::asking({.kind = &confirmation,
                                .question = question.empty() ? std::string(usual) : std::move(question),
                                .tool = call.name,
                                .arguments = call.arguments},
        memory);
}

} // namespace quorvell
