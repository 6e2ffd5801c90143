// SPDX-License-Identifier: MIT
// remember_about_them: a fact about the user is kept only after they said a clear yes to it themselves.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/tools/notebook/NotebookToolContext.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <string>

namespace quorvell {

/// remember_about_them fact. The first call answers {"status": "needs_confirmation", "fact", "question"} and keeps
/// nothing. The next call with the same fact goes by what the user answered to that question (PendingConsent): after a
/// clear yes the fact is kept and the answer is {"status": "remembered", "id", "fact"}; after anything else {"status":
/// "not_remembered", "fact", "message"}; while they were not asked it or have said nothing, the question again. A fact
/// that is kept already answers {"status": "known", "id", "fact"}. Private numbers and passwords are refused.
/// `forget`, with words of a fact or its id, puts the one that they fit into the waste basket: {"status": "forgotten",
/// "id", "fact"}; where they fit several {"status": "which_fact", "facts": [{"id", "fact"}], "question"}. Both ways to
/// change something give `undo` (UndoBook.h), which takes it back. Main thread.
class FactTool {
public:
    FactTool(FullNotebook& notebook, const NotebookToolContext& context);

    void call(const LiveFunctionCall& call, ToolReply reply);

private:
    void ask(const std::string& fact, PendingConsent::Answer answer, ToolReply reply);
    void settle(const std::string& fact, ToolReply reply);
    void settled(const std::string& fact, PendingConsent::Answer answer, ToolReply reply);
    void keep(const std::string& fact, ToolReply reply);
    void forget(const std::string& words, ToolReply reply);
    void remove(const Note& fact, ToolReply reply);
    /// With the way back in it, where there is a book for it.
    ToolResult undoable(ToolResult result, UndoBook::TakeBack takeBack) const;

    FullNotebook& m_notebook;
    const NotebookToolContext& m_context;
};

} // namespace quorvell
