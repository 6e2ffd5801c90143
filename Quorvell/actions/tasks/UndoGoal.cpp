// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/UndoGoal.h"

#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view undoGoals[] = {"undo", "undo it", "undo that", "undo this", "undo that step",
    "undo that again", "undo the last step", "undo the last action", "undo the last thing", "undo my last step",
    "undo your last step", "undo what you did", "undo what you just did", "take it back", "take that back",
    "take back what you did", "take back the last step", "take the last step back"};

} // namespace

bool UndoGoal::isOne(std::string_view goal)
{
    std::string words = TextMatch::normalized(goal);
    for (const std::string_view polite : {"please ", "can you ", "could you ", "please "})
        if (words.starts_with(polite))
            words.erase(0, polite.size());
    if (words.ends_with(" please"))
        words.resize(words.size() - std::string_view(" please").size());
    return std::ranges::find(undoGoals, words) != std::end(undoGoals);
}

ToolResult UndoGoal::told(const ActionResult& result)
{
    switch (result.kind) {
    case ActionResult::Kind::done:
        return ToolResult(ToolStatus::undone).advise(result.words);
    case ActionResult::Kind::needsYes:
        return ToolResult(ToolStatus::needsConfirmation)
            .ask(result.question)
            .advise("It is undone after their clear yes: ask the question word for word, wait, then call "
                    "confirm_action.");
    case ActionResult::Kind::stopped:
        return ToolResult(ToolStatus::stopped).advise(result.words);
    case ActionResult::Kind::failed:
    case ActionResult::Kind::refused:
    case ActionResult::Kind::unknown:
        break;
    }
    return ToolResult::failed(result.words);
}

std::function<void(ActionResult)> UndoGoal::teller(ToolReply reply, GoalOutcome::Telling telling)
{
    return [shared = std::make_shared<ToolReply>(std::move(reply)), telling = std::move(telling)](
               const ActionResult& result) {
        ToolResult answer = told(result);
        if (result.after)
            answer.add("screen", telling.screen(*result.after));
        shared->answer(answer);
    };
}

} // namespace quorvell
