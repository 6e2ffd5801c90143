// SPDX-License-Identifier: MIT
// What the notebook is asked, and what follows from its answers.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/skills/notes/NoteIntent.h"
#include "Understanding/skills/notes/NotebookQuestion.h"
#include "Understanding/words/ListPlace.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct NoteRules {
    static const QuestionKind whatToWrite;
    static const QuestionKind whatAbout; ///< The note that is to be read.
    static const QuestionKind whichOne; ///< Of those found.

    static RuleStep answer(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// Writes down what was said, under a title of its own making.
    static RuleStep keep(const std::string& words, RequestMemory memory, const RuleSurroundings& around);
    /// Looks for what the notebook says to a question.
    static RuleStep ask(const NotebookQuestion& question, RequestMemory memory, const RuleSurroundings& around);
    /// Where it is not clear which of the things that were told is meant.
    static RuleStep askWhich(const std::optional<ListPlace>& place, RequestMemory memory);
    static RuleStep takeResult(
        const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
